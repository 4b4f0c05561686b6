#include "platform/linux/HostnamedName.h"

#include "foundation/Text.h"
#include "platform/linux/CallDeadline.h"
#include "platform/posix/base/AtomicFile.h"

#include <sstream>
#include <string_view>

namespace morvex {

namespace {

constexpr std::chrono::milliseconds longestCall{500};
constexpr std::size_t longestFile = 64 * 1024;

std::string contentOf(const std::filesystem::path& path) {
    auto bytes = readWhole(path, longestFile);
    return bytes && *bytes ? repairUtf8(asText(**bytes)) : "";
}

/// Unquotes a value of an os-release(5) line, which is quoted like in a shell.
std::string unquoted(const std::string& value) {
    GLibHandle<char, g_free> text(g_shell_unquote(value.c_str(), nullptr));
    return text ? trim(text.get()) : "";
}

} // namespace

HostnamedName::Sources HostnamedName::Sources::ofThisSystem() {
    Sources sources;
    GLibHandle<char, g_free> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
    if (address) sources.systemBus = address.get();
    return sources;
}

std::string HostnamedName::name() const {
    auto name = nameOnBus();
    if (name.empty()) name = nameInMachineInfo();
    if (name.empty()) name = networkName();
    return name.empty() ? "Mac" : name;
}

std::string HostnamedName::nameOnBus() const {
    if (sources_.systemBus.empty()) return "";
    CallDeadline deadline(longestCall);
    auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                   G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GLibHandle<GDBusConnection> bus(g_dbus_connection_new_for_address_sync(
        sources_.systemBus.c_str(), flags, nullptr, deadline.cancellable(), nullptr));
    if (!bus) return "";
    GLibHandle<GVariant, g_variant_unref> reply(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.hostname1", "/org/freedesktop/hostname1",
        "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.freedesktop.hostname1", "PrettyHostname"), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NONE, static_cast<int>(longestCall.count()), deadline.cancellable(), nullptr));
    if (!reply) return "";
    GVariant* inner = nullptr;
    g_variant_get(reply.get(), "(v)", &inner);
    GLibHandle<GVariant, g_variant_unref> value(inner);
    if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING)) return "";
    return trim(g_variant_get_string(value.get(), nullptr));
}

std::string HostnamedName::nameInMachineInfo() const {
    constexpr std::string_view key = "PRETTY_HOSTNAME=";
    std::istringstream lines(contentOf(sources_.machineInfo));
    std::string name;
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(key)) name = unquoted(line.substr(key.size()));
    return name;
}

std::string HostnamedName::networkName() const {
    auto name = trim(contentOf(sources_.networkName));
    // The kernel's value when no name was set.
    return name == "(none)" ? "" : name;
}

} // namespace morvex
