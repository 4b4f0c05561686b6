#include "phone/Console.h"

namespace morvex {

namespace {

constexpr std::size_t longestLine = 1'048'576;

} // namespace

void Console::requestLine() {
    isWanted_ = true;
    input_->wake();
}

void Console::finish() {
    isFinished_ = true;
    input_->wake();
}

void Console::run() {
    while (!isFinished_) {
        giveLine();
        const auto event = input_->wait(isWanted_ && !isAtEnd_);
        for (int told = 0; told < event.interruptions; ++told) interrupt();
        if (event.typed) take(*event.typed);
    }
}

void Console::interrupt() {
    if (interruption_.stop_requested()) input_->endProcess();
    interruption_.request_stop();
}

void Console::take(const std::string& typed) {
    typed_ += typed;
    isAtEnd_ = typed.empty() || typed_.size() > longestLine;
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
