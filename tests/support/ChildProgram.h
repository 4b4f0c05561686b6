#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Require.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace morvex {

/// A real program that a test starts and ends. A missing program ends the test with its name. Create it on
/// the test's own thread: it is killed when that thread ends unexpectedly.
class ChildProgram {
  public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    ChildProgram(std::vector<std::string> command, const Environment& environment,
                 std::string_view input = {}) {
        auto [inputReader, inputWriter] = makePipe();
        auto [outputReader, outputWriter] = makePipe();
        std::vector<char*> arguments;
        for (auto& word : command) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        pid_ = ::fork();
        require(pid_ >= 0, "a test cannot start a program");
        if (pid_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::dup2(inputReader.get(), STDIN_FILENO);
            ::dup2(outputWriter.get(), STDOUT_FILENO);
            for (const auto& [name, value] : environment) ::setenv(name.c_str(), value.c_str(), 1);
            ::execvp(arguments[0], arguments.data());
            ::perror(arguments[0]);
            ::_exit(127);
        }
        require(::write(inputWriter.get(), input.data(), input.size()) == std::ssize(input),
                "a test cannot write to its program");
        output_ = std::move(outputReader);
    }

    ~ChildProgram() { end(); }

    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    /// The next line of its output, without the line break; if the output ends first, what there is.
    std::string readLine() {
        std::string line;
        for (char letter = 0; ::read(output_.get(), &letter, 1) == 1 && letter != '\n';) line += letter;
        return line;
    }

    /// Asks the program to end and waits for it.
    void end() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGTERM);
        ::waitpid(std::exchange(pid_, -1), nullptr, 0);
    }

  private:
    static std::pair<FileDescriptor, FileDescriptor> makePipe() {
        std::array<int, 2> ends{};
        require(::pipe2(ends.data(), O_CLOEXEC) == 0, "a test cannot make a pipe");
        return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    }

    pid_t pid_ = -1;
    FileDescriptor output_;
};

} // namespace morvex
