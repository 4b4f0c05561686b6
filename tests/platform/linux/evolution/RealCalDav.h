#pragma once

#include "tests/support/ChildProgram.h"
#include "tests/support/LoopbackPort.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// A CalDAV server with one empty calendar of a user "jana", without a password. Needs radicale.
class RealCalDav {
  public:
    static constexpr const char* path = "/jana/prace/";

    RealCalDav() {
        std::filesystem::create_directories(calendar());
        std::ofstream(calendar() / ".Radicale.props") << R"({"tag": "VCALENDAR", "D:displayname": "prace"})";
        std::ofstream(settings()) << "[server]\nhosts=127.0.0.1:" << port_
                                  << "\n[auth]\ntype=none\n[rights]\ntype=authenticated\n[storage]\n"
                                     "filesystem_folder="
                                  << folder_.path().string() << "\n[logging]\nlevel=error\n";
        start();
    }

    [[nodiscard]] std::uint16_t port() const { return port_; }

    /// Ends the server; what it has stays.
    void stop() { server_.reset(); }

    void start() {
        server_ = std::make_unique<ChildProgram>(
            std::vector<std::string>{"/usr/bin/python3", "-m", "radicale", "-C", settings().string()},
            ChildProgram::Environment{});
        waitForListener(port_, "radicale does not start; dev/install installs it");
    }

    /// Puts an object there, as another device would.
    void put(const std::string& name, const std::string& object) const {
        std::ofstream(calendar() / (name + ".ics")) << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\n"
                                                    << object << "END:VCALENDAR\r\n";
    }

    /// All that is there, unfolded.
    [[nodiscard]] std::vector<std::string> objects() const {
        std::vector<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(calendar())) {
            if (entry.path().extension() != ".ics") continue;
            std::ifstream file(entry.path());
            std::string text(std::istreambuf_iterator<char>(file), {});
            for (auto fold = text.find("\r\n "); fold != std::string::npos; fold = text.find("\r\n "))
                text.erase(fold, 3);
            all.push_back(std::move(text));
        }
        return all;
    }

  private:
    [[nodiscard]] std::filesystem::path calendar() const {
        return folder_.path() / "collection-root" / "jana" / "prace";
    }

    [[nodiscard]] std::filesystem::path settings() const { return folder_.path() / "settings"; }

    TemporaryFolder folder_;
    const std::uint16_t port_ = freePort();
    std::unique_ptr<ChildProgram> server_;
};

} // namespace morvex
