#pragma once

#include "shared/base/Require.h"
#include "tests/support/ChildProgram.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A session bus of the test's own that starts the real services of the desktop's data, with their files in a
/// folder that goes with the test. Needs dbus-daemon and evolution-data-server.
class PrivateDesktop {
  public:
    static constexpr const char* registry = "org.gnome.evolution.dataserver.Sources5";
    static constexpr const char* calendars = "org.gnome.evolution.dataserver.Calendar8";
    static constexpr const char* books = "org.gnome.evolution.dataserver.AddressBook10";

    /// `silent` names a service that is started and never comes to the bus.
    explicit PrivateDesktop(const std::string& silent = "") {
        require(std::filesystem::exists(installed(registry)),
                "evolution-data-server is missing; dev/install installs it");
        const auto services = home_.path() / "services";
        std::filesystem::create_directories(services);
        std::filesystem::create_directories(sources());
        // Only these: a keyring or an account of the machine has no part in it.
        for (const std::string name : {registry, calendars, books}) {
            if (name == silent)
                std::ofstream(services / (name + ".service"))
                    << "[D-BUS Service]\nName=" << name << "\nExec=/bin/sleep 30\n";
            else
                std::filesystem::copy(installed(name), services);
        }
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

    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;

    [[nodiscard]] std::string address() const { return std::getenv("DBUS_SESSION_BUS_ADDRESS"); }

    /// Ends the session bus, with which the services end.
    void end() { bus_->end(); }

    /// Puts a contact into the address book of this computer, as another program would.
    static void addContact(const std::string& familyName, const std::string& givenName,
                           const std::string& email, const std::string& phone) {
        const auto card = "BEGIN:VCARD\r\nVERSION:3.0\r\nN:" + familyName + ";" + givenName +
                          ";;;\r\nFN:" + givenName + " " + familyName + "\r\nEMAIL:" + email +
                          "\r\nTEL:" + phone + "\r\nEND:VCARD\r\n";
        ChildProgram adding({"/usr/bin/python3", MORVEX_SOURCE_DIR "/tests/support/add_contact.py",
                             "system-address-book", card},
                            {});
        require(!adding.readLine().empty(), "a test cannot add a contact");
    }

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

    /// A calendar of a CalDAV server without a password, whose address is http://127.0.0.1:`port``path`.
    void addCalDav(const std::string& id, const std::string& name, std::uint16_t port,
                   const std::string& path) const {
        std::ofstream(sources() / (id + ".source"))
            << "[Data Source]\nDisplayName=" << name
            << "\nEnabled=true\nParent=caldav-stub\n\n[Authentication]\nHost=127.0.0.1\nMethod=plain/"
               "password\n"
               "Port="
            << port
            << "\nUser=jana\nRememberPassword=false\n\n[Security]\nMethod=none\n\n[Offline]\n"
               "StaySynchronized=true\n\n[WebDAV Backend]\nResourcePath="
            << path << "\nCalendarAutoSchedule=false\n\n[Calendar]\nBackendName=caldav\n";
    }

    void removeSource(const std::string& id) const { std::filesystem::remove(sources() / (id + ".source")); }

  private:
    static std::string installed(const std::string& name) {
        return "/usr/share/dbus-1/services/" + name + ".service";
    }

    TemporaryFolder home_;
    std::unique_ptr<ChildProgram> bus_;
    std::optional<EnvironmentValue> address_;
};

} // namespace morvex
