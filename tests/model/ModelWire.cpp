#include "tests/model/ModelWire.h"

#include "relay/FailureFrame.h"
#include "shared/wire/ProtocolVersion.h"

#include <utility>

namespace morvex {

namespace {

bool hasContent(const std::string& frame) {
    return frame.contains(R"("kind":"data")");
}

} // namespace

ModelWire::ModelWire(Owner owner, Switchboard& switchboard, PairStore& store, Ledger& ledger)
    : owner_(owner),
      switchboard_(switchboard),
      store_(store),
      ledger_(ledger),
      login_(Login::start(ProtocolVersion::current.text())) {
    deliver(login_.challenge());
}

ModelWire::~ModelWire() {
    leave();
    switchboard_.forget(*this);
}

void ModelWire::deliver(std::string frame) {
    if (isEnding_) return;
    ledger_.toDevice.push_back(frame);
    toDevice_.push_back(std::move(frame));
}

std::size_t ModelWire::waiting() const {
    std::size_t bytes = 0;
    for (const auto& frame : toDevice_) bytes += frame.size();
    return bytes;
}

void ModelWire::end(Ending ending) {
    if (isEnding_) return;
    toDevice_.clear();
    if (!ending.lastFrame.empty()) deliver(std::move(ending.lastFrame));
    isEnding_ = true;
}

bool ModelWire::pass(Way way) {
    if (isStalled_ || ledger_.isAsleep) return false;
    auto& waitingFrames = frames(way);
    if (waitingFrames.empty()) return passEnd(way);
    if (way == Way::toRelay && isPaused_ && !isEnding_) return false;
    auto frame = std::move(waitingFrames.front());
    waitingFrames.pop_front();
    if (way == Way::toRelay) {
        if (!isEnding_ && !isLeft_) hear(std::move(frame));
    } else {
        if (hasContent(frame)) ++ledger_.messages;
        socket_->deliver(std::move(frame));
        switchboard_.drained(*this);
    }
    return true;
}

bool ModelWire::passEnd(Way way) {
    if (way == Way::toRelay && isDeviceGone() && !isLeft_) {
        leave();
        return true;
    }
    if (way == Way::toDevice && isEnding_ && !isDeviceGone()) {
        breakSocket();
        leave();
        return true;
    }
    return false;
}

void ModelWire::hear(std::string frame) {
    if (isLoggedIn_) return switchboard_.receive(*this, std::move(frame));
    const auto answer = login_.answer(store_, frame);
    if (!answer) return end({});
    if (const auto* failure = std::get_if<RelayFailure>(&*answer)) return end(refusalEnding(*failure));
    isLoggedIn_ = true;
    switchboard_.connect(*this, std::get<Seat>(*answer));
}

void ModelWire::cut() {
    loseRelay();
    leave();
}

void ModelWire::loseRelay() {
    toRelay_.clear();
    toDevice_.clear();
    isStalled_ = true;
    breakSocket();
}

void ModelWire::pong() {
    collect();
    if (!isStalled_ && !isEnding_ && !ledger_.isAsleep && toRelay_.empty() && toDevice_.empty())
        socket_->pong();
}

std::deque<std::string>& ModelWire::frames(Way way) {
    collect();
    return way == Way::toRelay ? toRelay_ : toDevice_;
}

void ModelWire::collect() {
    for (; collected_ < socket_->sent.size(); ++collected_) {
        ledger_.toRelay.push_back(socket_->sent[collected_]);
        if (!isBroken_) toRelay_.push_back(std::move(socket_->sent[collected_]));
    }
}

void ModelWire::leave() {
    if (std::exchange(isLeft_, true)) return;
    switchboard_.disconnect(*this);
    isEnding_ = true;
}

void ModelWire::breakSocket() {
    collect();
    isBroken_ = true;
    toRelay_.clear();
    socket_->breakWith("spojení se přerušilo");
}

} // namespace morvex
