#include "phone/Console.h"

#include "foundation/SystemError.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

constexpr std::size_t longestLine = 1'048'576;
constexpr std::array handledSignals{SIGINT, SIGTERM, SIGHUP};

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
    for (int signal : handledSignals) ::sigaction(signal, &action, nullptr);
}

std::optional<termios> settingsOf(int terminal) {
    termios settings{};
    return ::tcgetattr(terminal, &settings) == 0 ? std::optional(settings) : std::nullopt;
}

bool makeNonBlocking(int descriptor) {
    return ::fcntl(descriptor, F_SETFL, O_NONBLOCK) == 0 && ::fcntl(descriptor, F_SETFD, FD_CLOEXEC) == 0;
}

} // namespace

Result<std::unique_ptr<Console>> Console::create(Inbox& inbox, std::stop_source interruption, int input) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return fail(SystemError{errno});
    Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    if (!makeNonBlocking(ends[0]) || !makeNonBlocking(ends[1])) return fail(SystemError{errno});
    signalPipe = ends[1];
    handleSignals(onSignal);
    return std::unique_ptr<Console>(new Console(inbox, std::move(interruption), input, std::move(pipe)));
}

Console::Console(Inbox& inbox, std::stop_source interruption, int input, Pipe pipe)
    : inbox_(inbox),
      interruption_(std::move(interruption)),
      input_(input),
      pipe_(std::move(pipe)),
      usual_(settingsOf(input)) {}

Console::~Console() {
    showTyping();
    handleSignals(SIG_DFL);
    signalPipe = -1;
}

bool Console::isInteractive() const {
    return ::isatty(input_) != 0 && ::isatty(STDERR_FILENO) != 0;
}

void Console::requestLine() {
    isWanted_ = true;
    send(pipe_.writing.get(), wakeUp);
}

void Console::forgetTypeAhead() {
    if (isInteractive()) ::tcflush(input_, TCIFLUSH);
}

void Console::hideTyping() {
    if (!usual_) return;
    auto hidden = *usual_;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    hidden.c_lflag |= ECHONL;
    ::tcsetattr(input_, TCSAFLUSH, &hidden);
}

void Console::showTyping() {
    if (usual_) ::tcsetattr(input_, TCSANOW, &*usual_);
}

void Console::finish() {
    isFinished_ = true;
    send(pipe_.writing.get(), wakeUp);
}

void Console::run() {
    while (!isFinished_) {
        giveLine();
        const int input = isWanted_ && !isAtEnd_ ? input_ : -1;
        std::array<pollfd, 2> waiting{{{pipe_.reading.get(), POLLIN, 0}, {input, POLLIN, 0}}};
        if (::poll(waiting.data(), waiting.size(), -1) < 0) continue;
        if (waiting[0].revents != 0) takeSignals();
        if (waiting[1].revents != 0) readSome();
    }
}

void Console::takeSignals() {
    std::array<char, 64> told{};
    const auto count = ::read(pipe_.reading.get(), told.data(), told.size());
    for (std::size_t index = 0; count > 0 && index < static_cast<std::size_t>(count); ++index) {
        if (told[index] != interrupt) continue;
        constexpr int interruptedCode = 130;
        if (interruption_.stop_requested()) {
            showTyping();
            ::_exit(interruptedCode);
        }
        interruption_.request_stop();
    }
}

void Console::readSome() {
    std::array<char, 4096> chunk{};
    const auto count = ::read(input_, chunk.data(), chunk.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count > 0) typed_.append(chunk.data(), static_cast<std::size_t>(count));
    isAtEnd_ = count <= 0 || typed_.size() > longestLine;
}

void Console::giveLine() {
    if (!isWanted_) return;
    const auto end = typed_.find('\n');
    const bool isWhole = end != std::string::npos;
    if (!isWhole && !isAtEnd_) return;
    // Before the event: whoever takes it may ask for the next line at once.
    isWanted_ = false;
    if (!isWhole && (typed_.empty() || typed_.size() > longestLine)) return inbox_.push(Inbox::EndOfInput{});
    inbox_.push(Inbox::Line{typed_.substr(0, end)});
    typed_.erase(0, isWhole ? end + 1 : typed_.size());
}

} // namespace morvex
