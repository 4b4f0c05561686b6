#pragma once

#include "platform/linux/GLibHandle.h"
#include "tests/support/ChildProgram.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/TemporaryFolder.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace morvex {

/// A session bus of the test's own that starts the real services of the desktop's data, with their files in a
/// folder that goes with the test. Needs dbus-daemon and evolution-data-server.
class PrivateDesktop {
  public:
    static constexpr const char* registry = "org.gnome.evolution.dataserver.Sources5";
    static constexpr const char* calendars = "org.gnome.evolution.dataserver.Calendar8";
    static constexpr const char* books = "org.gnome.evolution.dataserver.AddressBook10";

    static bool isInstalled() { return std::filesystem::exists(installed(registry)); }

    PrivateDesktop() {
        const auto services = home_.path() / "services";
        std::filesystem::create_directories(services);
        std::filesystem::create_directories(sources());
        // Only these: a keyring or an account of the machine has no part in it.
        for (const char* name : {registry, calendars, books})
            std::filesystem::copy(installed(name), services);
        const auto settings = home_.path() / "bus.conf";
        std::ofstream(settings) << "<busconfig><type>session</type><listen>unix:path="
                                << (home_.path() / "bus").string()
                                << "</listen><auth>EXTERNAL</auth><servicedir>" << services.string()
                                << "</servicedir><policy context='default'><allow send_destination='*'/>"
                                   "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>";
        const auto home = home_.path().string();
        bus_ = std::make_unique<ChildProgram>(std::vector<std::string>{"dbus-daemon",
                                                                       "--config-file=" + settings.string(),
                                                                       "--nofork", "--print-address"},
                                              ChildProgram::Environment{{"HOME", home},
                                                                        {"XDG_CONFIG_HOME", home + "/config"},
                                                                        {"XDG_DATA_HOME", home + "/data"},
                                                                        {"XDG_CACHE_HOME", home + "/cache"},
                                                                        {"XDG_RUNTIME_DIR", home},
                                                                        {"GSETTINGS_BACKEND", "memory"},
                                                                        {"GIO_USE_VFS", "local"},
                                                                        {"TZ", "Europe/Prague"},
                                                                        {"DISPLAY", ""},
                                                                        {"WAYLAND_DISPLAY", ""}});
        address_.emplace("DBUS_SESSION_BUS_ADDRESS", bus_->readLine());
    }

    ~PrivateDesktop() {
        for (const char* name : {calendars, books, registry})
            if (const auto process = processOf(name)) ::kill(process, SIGKILL);
    }

    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;

    /// The folder of the files that describe sources.
    [[nodiscard]] std::filesystem::path sources() const {
        return home_.path() / "config" / "evolution" / "sources";
    }

    [[nodiscard]] const std::filesystem::path& home() const { return home_.path(); }

    /// A source of this computer; `extension` is such as "Calendar".
    void addSource(const std::string& id, const std::string& name, const std::string& extension) const {
        std::ofstream(sources() / (id + ".source"))
            << "[Data Source]\nDisplayName=" << name << "\nEnabled=true\nParent=local-stub\n\n[" << extension
            << "]\nBackendName=local\n";
    }

    void removeSource(const std::string& id) const { std::filesystem::remove(sources() / (id + ".source")); }

    /// The process that has a name on the bus, or 0.
    static pid_t processOf(const char* name) {
        const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
        GLibHandle<GDBusConnection> bus(g_dbus_connection_new_for_address_sync(
            address,
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr));
        if (!bus) return 0;
        GLibHandle<GVariant, g_variant_unref> answer(g_dbus_connection_call_sync(
            bus.get(), "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID",
            g_variant_new("(s)", name), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        guint32 process = 0;
        if (answer) g_variant_get(answer.get(), "(u)", &process);
        return static_cast<pid_t>(process);
    }

  private:
    static std::string installed(const std::string& name) {
        return "/usr/share/dbus-1/services/" + name + ".service";
    }

    TemporaryFolder home_;
    std::unique_ptr<ChildProgram> bus_;
    std::optional<EnvironmentValue> address_;
};

} // namespace morvex
