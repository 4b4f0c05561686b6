#pragma once

#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <memory>

namespace morvex {

/// A D-Bus message bus of the test, with no services and none that it could start. Needs dbus-daemon.
class PrivateBus {
  public:
    PrivateBus() {
        auto settings = folder_.path() / "bus.conf";
        std::ofstream(settings) << "<busconfig><type>session</type><listen>unix:path="
                                << (folder_.path() / "bus").string()
                                << "</listen><auth>EXTERNAL</auth><policy context='default'>"
                                   "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/>"
                                   "</policy></busconfig>";
        daemon_ = std::make_unique<ChildProgram>(
            std::vector<std::string>{"dbus-daemon", "--config-file=" + settings.string(), "--nofork",
                                     "--print-address"},
            ChildProgram::Environment{});
        address_ = daemon_->readLine();
        require(!address_.empty(), "dbus-daemon does not start");
    }

    [[nodiscard]] const std::string& address() const { return address_; }

    /// The folder of its socket, which is called "bus".
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }

    void end() { daemon_->end(); }

  private:
    TemporaryFolder folder_;
    std::unique_ptr<ChildProgram> daemon_;
    std::string address_;
};

} // namespace morvex
