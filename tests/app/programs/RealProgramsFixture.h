#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "tests/app/programs/RealPrograms.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace morvex {

class RealProgramsTest : public testing::Test {
  protected:
    VysledekProcesu shell(const std::string& script) {
        return programs.run(RealPrograms::shell(script)).value();
    }

    std::string launchProblem(OutsideProgram program) {
        auto result = programs.run(std::move(program));
        return result ? "" : result.error().popis().czech();
    }

    std::string fifo() {
        auto path = (folder.path() / "fifo").string();
        require(::mkfifo(path.c_str(), 0600) == 0, "no pipe");
        return path;
    }

    /// Whether every process that had the other end has let go of it.
    static bool isLetGo(const FileDescriptor& end) {
        pollfd entry{end.get(), POLLIN, 0};
        char byte = 0;
        return ::poll(&entry, 1, 60'000) == 1 && ::read(end.get(), &byte, 1) == 0;
    }

    static std::size_t openDescriptors() {
        auto all = std::filesystem::directory_iterator("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    static bool hasChildren() { return ::waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD; }

    TemporaryFolder folder;
    RealPrograms programs;
};

} // namespace morvex
