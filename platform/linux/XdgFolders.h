#pragma once

#include "platform/ports/StandardFolders.h"

namespace morvex {

/// The base directories and user directories of freedesktop.org (XDG), looked up at every question in
/// the environment, the password database and `user-dirs.dirs`.
class XdgFolders final : public StandardFolders {
  public:
    /// `$HOME` when it is absolute, else the home folder of the password database.
    [[nodiscard]] std::string home() const override;
    [[nodiscard]] std::string accountHome() const override;
    [[nodiscard]] std::optional<std::string> homeOf(const std::string& user) const override;
    [[nodiscard]] std::optional<std::string> desktop() const override;

    [[nodiscard]] std::string applicationSupport() const override;
    [[nodiscard]] std::string configuration() const override;
};

} // namespace morvex
