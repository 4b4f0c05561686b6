#include "platform/posix/TerminalInput.h"

#include "platform/posix/base/Process.h"
#include "shared/base/SystemError.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

// What goes through the pipe.
constexpr char wakeUp = 'w';
constexpr char interrupt = 'i';

/// The only thing that a signal handler can reach.
std::atomic<int> signalPipe = -1;

void send(int pipe, char what) {
    // A full pipe wakes as well.
    [[maybe_unused]] auto written = ::write(pipe, &what, 1);
}

void onSignal(int) {
    const int before = errno;
    send(signalPipe, interrupt);
    errno = before;
}

void handleSignals(void (*handler)(int)) {
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endSignals) ::sigaction(signal, &action, nullptr);
}

bool makeNonBlocking(int descriptor) {
    return ::fcntl(descriptor, F_SETFL, O_NONBLOCK) == 0 && ::fcntl(descriptor, F_SETFD, FD_CLOEXEC) == 0;
}

} // namespace

Result<std::unique_ptr<TerminalInput>> TerminalInput::create(int input) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return fail(SystemError{errno});
    Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    if (!makeNonBlocking(ends[0]) || !makeNonBlocking(ends[1])) return fail(SystemError{errno});
    signalPipe = ends[1];
    handleSignals(onSignal);
    return std::unique_ptr<TerminalInput>(new TerminalInput(input, std::move(pipe)));
}

TerminalInput::TerminalInput(int input, Pipe pipe) : input_(input), pipe_(std::move(pipe)), echo_(input) {}

TerminalInput::~TerminalInput() {
    echo_.show();
    handleSignals(SIG_DFL);
    signalPipe = -1;
}

bool TerminalInput::isInteractive() const {
    return isTerminal(input_) && isTerminal(standardError);
}

void TerminalInput::forgetTypeAhead() {
    if (isInteractive()) ::tcflush(input_, TCIFLUSH);
}

void TerminalInput::wake() {
    send(pipe_.writing.get(), wakeUp);
}

TerminalInput::Event TerminalInput::wait(bool wantsInput) {
    std::array<pollfd, 2> waiting{{{pipe_.reading.get(), POLLIN, 0}, {wantsInput ? input_ : -1, POLLIN, 0}}};
    Event event;
    if (::poll(waiting.data(), waiting.size(), -1) < 0) return event;
    if (waiting[0].revents != 0) event.interruptions = takeSignals();
    if (waiting[1].revents != 0) event.typed = readSome();
    return event;
}

int TerminalInput::takeSignals() {
    std::array<char, 64> told{};
    const auto count = ::read(pipe_.reading.get(), told.data(), told.size());
    int interruptions = 0;
    for (std::size_t index = 0; count > 0 && index < static_cast<std::size_t>(count); ++index)
        if (told[index] == interrupt) ++interruptions;
    return interruptions;
}

std::optional<std::string> TerminalInput::readSome() {
    std::array<char, 4096> chunk{};
    const auto count = ::read(input_, chunk.data(), chunk.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return std::nullopt;
    return std::string(chunk.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
}

void TerminalInput::endProcess() {
    constexpr int interruptedCode = 130;
    echo_.show();
    ::_exit(interruptedCode);
}

} // namespace morvex
