#include "tests/support/Program.h"

#include "shared/base/Require.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <poll.h>
#include <pty.h>
#include <spawn.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace morvex {

namespace {

constexpr std::chrono::seconds patience{30};

/// What the program reads from, and what is typed into.
std::array<int, 2> openInput(Program::Input kind) {
    std::array<int, 2> ends{};
    if (kind == Program::Input::pipe) {
        require(::pipe2(ends.data(), O_CLOEXEC) == 0, "no pipe");
        return ends;
    }
    require(::openpty(&ends[1], ends.data(), nullptr, nullptr, nullptr) == 0, "no terminal");
    for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    return ends;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (auto& text : texts) all.push_back(text.data());
    all.push_back(nullptr);
    return all;
}

/// Starts this command with its input and its output. A terminal that a program opens in a session of its own
/// is that session's.
pid_t start(std::vector<std::string>& words, std::vector<std::string>& variables, Program::Input kind, int in,
            int out) {
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (kind == Program::Input::terminal) {
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
        posix_spawn_file_actions_addopen(&actions, 0, ::ttyname(in), O_RDWR, 0);
    } else {
        posix_spawn_file_actions_adddup2(&actions, in, 0);
    }
    posix_spawn_file_actions_adddup2(&actions, out, 1);
    posix_spawn_file_actions_adddup2(&actions, out, 2);
    pid_t process = -1;
    const auto failure = ::posix_spawn(&process, words[0].c_str(), &actions, &attributes,
                                       pointers(words).data(), pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    require(failure == 0, "a program cannot be started");
    return process;
}

} // namespace

Program::Program(const std::string& name, const std::vector<std::string>& arguments,
                 const Environment& environment, Input input)
    : name_(name) {
    const auto in = openInput(input);
    std::array<int, 2> out{};
    require(::pipe2(out.data(), O_CLOEXEC) == 0, "no pipes");

    std::vector<std::string> words{std::string(MORVEX_BIN_DIR) + "/" + name};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables;
    for (const auto& [key, value] : environment) variables.push_back(key + "=" + value);

    process_ = start(words, variables, input, in[0], out[1]);
    ::close(in[0]);
    ::close(out[1]);
    input_ = in[1];
    collector_ = std::thread([this, descriptor = out[0]] { collect(descriptor); });
}

Program::~Program() {
    if (exitCode_ < 0) {
        signal(SIGKILL);
        wait();
    }
    closeInput();
}

std::string Program::waitForLine(const std::string& text) {
    std::size_t from = 0;
    return waitFor(text, from);
}

std::string Program::waitForNextLine(const std::string& text) {
    return waitFor(text, seen_);
}

void Program::type(const std::string& line) const {
    auto text = line + "\n";
    require(::write(input_, text.data(), text.size()) == static_cast<ssize_t>(text.size()),
            "the input is closed");
}

std::string Program::echo() const {
    std::string shown;
    std::array<char, 4096> chunk{};
    for (pollfd ready{input_, POLLIN, 0}; ::poll(&ready, 1, 0) > 0 && (ready.revents & POLLIN) != 0;) {
        const auto got = ::read(input_, chunk.data(), chunk.size());
        if (got <= 0) break;
        shown.append(chunk.data(), static_cast<std::size_t>(got));
    }
    return shown;
}

void Program::closeInput() {
    if (input_ >= 0) ::close(input_);
    input_ = -1;
}

void Program::signal(int number) const {
    ::kill(process_, number);
}

bool Program::hasEnded() const {
    siginfo_t told{};
    return exitCode_ >= 0 ||
           (::waitid(P_PID, static_cast<id_t>(process_), &told, WEXITED | WNOHANG | WNOWAIT) == 0 &&
            told.si_pid == process_);
}

int Program::wait() {
    if (exitCode_ >= 0) return exitCode_;
    auto deadline = std::chrono::steady_clock::now() + patience;
    int status = 0;
    while (::waitpid(process_, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            std::cerr << name_ << " does not end. It printed:\n" << output();
            signal(SIGKILL);
            deadline += patience;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    noteEnd(status);
    return exitCode_;
}

void Program::noteEnd(int status) {
    collector_.join();
    exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void Program::waitForHandler(int number) const {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < deadline) {
        std::ifstream status("/proc/" + std::to_string(process_) + "/status");
        for (std::string name, value; status >> name >> value;)
            if (name == "SigCgt:" && (std::stoull(value, nullptr, 16) >> (number - 1)) & 1U) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    require(false, "a program does not take a signal over");
}

Program::Stepped Program::endBySignals(int first, int second, std::size_t distance) {
    constexpr int systemCall = SIGTRAP | 0x80;
    const auto send = [this](int number) { ::syscall(SYS_tgkill, process_, process_, number); };
    int status = 0;
    require(::ptrace(PTRACE_SEIZE, process_, nullptr, PTRACE_O_TRACESYSGOOD) == 0 &&
                ::ptrace(PTRACE_INTERRUPT, process_, nullptr, nullptr) == 0 &&
                ::waitpid(process_, &status, __WALL) == process_,
            "a program cannot be traced");
    send(first);
    std::size_t steps = 0;
    long delivered = 0;
    while (true) {
        ::ptrace(PTRACE_SYSCALL, process_, nullptr, delivered);
        if (::waitpid(process_, &status, __WALL) != process_ || !WIFSTOPPED(status)) break;
        const bool isStep = WSTOPSIG(status) == systemCall;
        const bool isSignal = !isStep && status >> 16 == 0;
        delivered = isSignal ? WSTOPSIG(status) : 0;
        if (isStep && ++steps == distance) send(second);
    }
    noteEnd(status);
    return {exitCode_, steps};
}

std::string Program::output() {
    std::lock_guard lock(mutex_);
    return output_;
}

void Program::collect(int descriptor) {
    std::array<char, 4096> chunk{};
    for (;;) {
        auto got = ::read(descriptor, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        std::lock_guard lock(mutex_);
        output_.append(chunk.data(), static_cast<std::size_t>(got));
        changed_.notify_all();
    }
    ::close(descriptor);
}

bool Program::findLine(const std::string& text, std::size_t& from, std::string& line) const {
    auto found = output_.find(text, from);
    auto end = found == std::string::npos ? found : output_.find('\n', found);
    if (end == std::string::npos) return false;
    auto begin = output_.rfind('\n', found);
    begin = begin == std::string::npos ? 0 : begin + 1;
    line = output_.substr(begin, end - begin);
    from = end + 1;
    return true;
}

std::string Program::waitFor(const std::string& text, std::size_t& from) {
    std::unique_lock lock(mutex_);
    std::string line;
    if (!changed_.wait_for(lock, patience, [&] { return findLine(text, from, line); })) {
        std::cerr << name_ << " never printed \"" << text << "\" but:\n" << output_;
        require(false, "a program did not print what was waited for");
    }
    return line;
}

Ended runProgram(const std::string& name, const std::vector<std::string>& arguments,
                 const Program::Environment& environment, const std::string& input) {
    Program program(name, arguments, environment);
    if (!input.empty()) program.type(input);
    program.closeInput();
    auto code = program.wait();
    return {code, program.output()};
}

} // namespace morvex
