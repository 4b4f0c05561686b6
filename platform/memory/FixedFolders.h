#pragma once

#include "platform/ports/StandardFolders.h"

#include <map>

namespace morvex {

/// Standard folders set by a test; set them before other threads read them.
class FixedFolders final : public StandardFolders {
  public:
    [[nodiscard]] std::string home() const override { return homeFolder; }

    [[nodiscard]] std::string accountHome() const override { return homeFolder; }

    [[nodiscard]] std::optional<std::string> homeOf(const std::string& user) const override {
        auto found = homes.find(user);
        return found == homes.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] std::optional<std::string> desktop() const override { return desktopFolder; }

    [[nodiscard]] std::string applicationSupport() const override { return homeFolder + "/.local/share"; }

    [[nodiscard]] std::string configuration() const override { return homeFolder + "/.config"; }

    std::string homeFolder = "/nonexistent";
    std::map<std::string, std::string> homes;
    std::optional<std::string> desktopFolder;
};

} // namespace morvex
