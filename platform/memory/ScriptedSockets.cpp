#include "platform/memory/ScriptedSockets.h"

#include <utility>

namespace morvex {

namespace {

using Sending = std::shared_ptr<OneShot<Result<void>>>;

Task<Result<void>> endOf(Sending sending) {
    co_return co_await sending->wait();
}

Task<Result<void>> endedWith(Result<void> result) {
    co_return result;
}

} // namespace

Task<Result<void>> ScriptedSocket::sendText(std::string text) {
    if (!open_) return endedWith(fail(NetworkError{Sentence(why_)}));
    if (refusals > 0) {
        --refusals;
        return endedWith(fail(NetworkError{Sentence("odeslání selhalo")}));
    }
    if (!waitingSends_.empty() && waitingBytes_ + text.size() > sendLimit)
        return endedWith(fail(NetworkError{Sentence("spojení nestíhá odesílat")}));
    if (holdsSends_) waitingBytes_ += text.size();
    sent.push_back(std::move(text));
    if (!holdsSends_) return endedWith({});
    waitingSends_.push_back(std::make_shared<OneShot<Result<void>>>());
    return endOf(waitingSends_.back());
}

Task<Result<WebSocketFrame>> ScriptedSocket::receive() {
    auto frame = co_await incoming_.next();
    if (!frame) co_return fail(NetworkError{Sentence(why_)});
    co_return *std::move(frame);
}

Task<Result<void>> ScriptedSocket::ping() {
    ++pings;
    if (!open_) co_return fail(NetworkError{Sentence(why_)});
    auto shot = std::make_shared<OneShot<Result<void>>>();
    waitingPings_.push_back(shot);
    co_return co_await shot->wait();
}

void ScriptedSocket::close(CloseCode code) {
    closed.push_back(code);
    breakWith(why_);
}

void ScriptedSocket::deliver(std::string text, WebSocketFrame::Kind kind) {
    incoming_.push({kind, std::move(text)});
}

void ScriptedSocket::breakWith(std::string text) {
    if (!std::exchange(open_, false)) return;
    why_ = std::move(text);
    incoming_.end();
    ended_.request_stop();
    answer(waitingPings_, fail(NetworkError{Sentence(why_)}));
    endSends(fail(NetworkError{Sentence(why_)}));
}

void ScriptedSocket::pong() {
    answer(waitingPings_, {});
}

void ScriptedSocket::refusePong() {
    answer(waitingPings_, fail(NetworkError{Sentence("ping selhal")}));
}

void ScriptedSocket::holdBack() {
    reading_ = {true, reading_.pauses + 1};
}

void ScriptedSocket::readOn() {
    reading_.isHeldBack = false;
}

void ScriptedSocket::holdSends() {
    holdsSends_ = true;
}

void ScriptedSocket::takeSends() {
    holdsSends_ = false;
    endSends({});
}

void ScriptedSocket::answerSends(const Result<void>& result) {
    endSends(result);
}

void ScriptedSocket::endSends(const Result<void>& result) {
    waitingBytes_ = 0;
    answer(waitingSends_, result);
}

void ScriptedSocket::answer(Waiting& waiting, const Result<void>& result) {
    for (auto& shot : std::exchange(waiting, {})) shot->answer(result);
}

Task<Result<std::shared_ptr<WebSocket>>> ScriptedSockets::connect(WebSocketRequest request,
                                                                  std::stop_token stop) {
    urls.push_back(std::move(request.url));
    headers.push_back(std::move(request.headers));
    if (stop.stop_requested() || next_.empty()) co_return fail(NetworkError{Sentence("spojení odmítnuto")});
    auto socket = next_.front();
    next_.pop_front();
    socket->sendLimit = request.sendLimit;
    co_return std::shared_ptr<WebSocket>(std::move(socket));
}

std::shared_ptr<ScriptedSocket> ScriptedSockets::layOut() {
    next_.push_back(std::make_shared<ScriptedSocket>());
    return next_.back();
}

} // namespace morvex
