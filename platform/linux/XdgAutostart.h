#pragma once

#include "platform/ports/LoginItem.h"

#include <filesystem>

namespace morvex {

/// The login item as a file in the XDG autostart folder, "<config home>/autostart/morvex.desktop". If the
/// desktop's own settings disabled the file, that is respected.
class XdgAutostart final : public LoginItem {
  public:
    /// `program` is the absolute path of what is to start.
    XdgAutostart(const std::filesystem::path& configHome, std::filesystem::path program)
        : entry_(configHome / "autostart" / "morvex.desktop"), program_(std::move(program)) {}

    [[nodiscard]] bool isEnabled() const override;
    Result<void> enroll() override;
    Result<void> withdraw() override;

  private:
    std::filesystem::path entry_;
    std::filesystem::path program_;
};

} // namespace morvex
