#include "platform/linux/XdgFolders.h"

#include "foundation/Text.h"
#include "platform/posix/base/AtomicFile.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <string_view>
#include <unistd.h>

namespace morvex {

namespace {

constexpr std::size_t longestUserDirs = 64 * 1024;
constexpr std::string_view desktopKey = "XDG_DESKTOP_DIR";

/// Relative paths are ignored, as freedesktop.org demands for the base directories.
std::optional<std::string> absoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    return value && *value == '/' ? std::optional<std::string>(value) : std::nullopt;
}

template <class Look> std::optional<std::string> passwordHome(Look look) {
    std::array<char, 16 * 1024> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (look(entry, buffer, found) != 0 || !found || !found->pw_dir || *found->pw_dir != '/')
        return std::nullopt;
    return found->pw_dir;
}

/// Removes the quotes and the escaping backslashes, and expands a leading `$HOME`.
std::optional<std::string> unquoted(std::string_view value, const std::string& home) {
    if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"')) return std::nullopt;
    value = value.substr(1, value.size() - 2);
    std::string path;
    if (value.starts_with("$HOME") && (value.size() == 5 || value[5] == '/')) {
        path = home;
        value.remove_prefix(5);
    }
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\\' && i + 1 < value.size()) ++i;
        path += value[i];
    }
    return path.starts_with('/') && !path.contains('\0') ? std::optional(path) : std::nullopt;
}

/// As in a shell, the last line that sets the desktop folder wins.
std::optional<std::string> configuredDesktop(std::string_view userDirs, const std::string& home) {
    std::optional<std::string> desktop;
    while (!userDirs.empty()) {
        auto end = std::min(userDirs.find('\n'), userDirs.size());
        auto line = trim(userDirs.substr(0, end));
        userDirs.remove_prefix(std::min(end + 1, userDirs.size()));
        if (!line.starts_with(desktopKey)) continue;
        auto rest = trim(std::string_view(line).substr(desktopKey.size()));
        if (!rest.starts_with('=')) continue;
        if (auto path = unquoted(trim(std::string_view(rest).substr(1)), home)) desktop = path;
    }
    return desktop;
}

bool isSameFolder(const std::string& left, const std::string& right) {
    auto normal = [](const std::string& path) {
        return std::filesystem::path(path + "/").lexically_normal();
    };
    std::error_code missing;
    return normal(left) == normal(right) || std::filesystem::equivalent(left, right, missing);
}

} // namespace

std::string XdgFolders::home() const {
    auto home = absoluteVariable("HOME");
    return home ? *home : accountHome();
}

std::string XdgFolders::accountHome() const {
    auto home = passwordHome([](passwd& entry, auto& buffer, passwd*& found) {
        return ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
    });
    return home.value_or("/");
}

std::optional<std::string> XdgFolders::homeOf(const std::string& user) const {
    if (user.contains('\0')) return std::nullopt;
    return passwordHome([&user](passwd& entry, auto& buffer, passwd*& found) {
        return ::getpwnam_r(user.c_str(), &entry, buffer.data(), buffer.size(), &found);
    });
}

std::optional<std::string> XdgFolders::desktop() const {
    auto homeFolder = home();
    auto desktop = homeFolder + "/Desktop";
    auto userDirs = readWhole(configuration() + "/user-dirs.dirs", longestUserDirs);
    if (userDirs && *userDirs)
        desktop = configuredDesktop(asText(**userDirs), homeFolder).value_or(std::move(desktop));
    // Setting the desktop folder to the home folder means that there is none.
    return isSameFolder(desktop, homeFolder) ? std::nullopt : std::optional(desktop);
}

std::string XdgFolders::applicationSupport() const {
    return absoluteVariable("XDG_DATA_HOME").value_or(home() + "/.local/share");
}

std::string XdgFolders::configuration() const {
    return absoluteVariable("XDG_CONFIG_HOME").value_or(home() + "/.config");
}

} // namespace morvex
