#include "platform/linux/XdgAutostart.h"

#include "platform/linux/GLibHandle.h"
#include "platform/posix/base/AtomicFile.h"
#include "platform/posix/base/Uninterrupted.h"
#include "shared/base/SystemError.h"

#include <cerrno>
#include <string>
#include <string_view>
#include <unistd.h>

namespace morvex {

namespace {

constexpr std::size_t longestEntry = 65'536;
using KeyFile = GLibHandle<GKeyFile, g_key_file_unref>;

/// Quotes an argument of the key Exec, as freedesktop.org defines it for desktop entries 1.5. The escaping of
/// the key file is applied in addition.
std::string execArgument(std::string_view argument) {
    std::string text = "\"";
    for (char letter : argument) {
        if (std::string_view("\"`$\\").contains(letter)) text += '\\';
        if (letter == '%') text += '%';
        text += letter;
    }
    return text + '"';
}

bool isTrue(GKeyFile* entry, const char* key) {
    return g_key_file_get_boolean(entry, G_KEY_FILE_DESKTOP_GROUP, key, nullptr) != FALSE;
}

bool has(GKeyFile* entry, const char* key) {
    return g_key_file_has_key(entry, G_KEY_FILE_DESKTOP_GROUP, key, nullptr) != FALSE;
}

} // namespace

bool XdgAutostart::isEnabled() const {
    constexpr const char* desktopSwitch = "X-GNOME-Autostart-enabled";
    auto bytes = readWhole(entry_, longestEntry);
    if (!bytes || !*bytes) return false;
    auto text = asText(**bytes);
    KeyFile entry(g_key_file_new());
    if (!g_key_file_load_from_data(entry.get(), text.data(), text.size(), G_KEY_FILE_NONE, nullptr))
        return false;
    if (!has(entry.get(), G_KEY_FILE_DESKTOP_KEY_EXEC)) return false;
    if (isTrue(entry.get(), G_KEY_FILE_DESKTOP_KEY_HIDDEN)) return false;
    return !has(entry.get(), desktopSwitch) || isTrue(entry.get(), desktopSwitch);
}

Result<void> XdgAutostart::enroll() {
    KeyFile file(g_key_file_new());
    auto set = [entry = file.get()](const char* key, const std::string& value) {
        g_key_file_set_string(entry, G_KEY_FILE_DESKTOP_GROUP, key, value.c_str());
    };
    set(G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    set(G_KEY_FILE_DESKTOP_KEY_NAME, "Morvex");
    set(G_KEY_FILE_DESKTOP_KEY_EXEC, execArgument(program_.string()));
    gsize length = 0;
    GLibHandle<char, g_free> text(g_key_file_to_data(file.get(), &length, nullptr));
    return writeAtomically(entry_, asBytes(std::string_view(text.get(), length)));
}

Result<void> XdgAutostart::withdraw() {
    if (uninterrupted([&] { return ::unlink(entry_.c_str()); }) == 0 || errno == ENOENT || errno == ENOTDIR)
        return {};
    return fail(SystemError{errno});
}

} // namespace morvex
