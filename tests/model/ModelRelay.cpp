#include "tests/model/ModelRelay.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace morvex {

namespace {

constexpr Switchboard::Bounds bounds{
    .frame = 16 * 1024 * 1024, .waiting = 4 * 1024 * 1024, .heldInAll = 64 * 1024 * 1024};

std::string_view pathOf(std::string_view url) {
    const auto host = url.find("://") + 3;
    return url.substr(std::min(url.find('/', host), url.size()));
}

} // namespace

ModelRelay::ModelRelay(const Clock& clock)
    : clock_(clock), store_(PairStore::open(":memory:").value()), calls_(store_, [this] {
          const auto number = std::to_string(++pairs_);
          return FreshPair{PairID{"PAIR" + number}, "token" + number};
      }) {
    switchboard_.emplace(bounds);
}

Task<Result<std::shared_ptr<WebSocket>>> ModelRelay::Access::connect(WebSocketRequest, std::stop_token) {
    if (!isReachable) co_return fail(NetworkError{Sentence("síť je nedostupná")});
    relay_.forgetDeadWires();
    relay_.wires_.push_back(std::make_unique<ModelWire>(
        owner_, *relay_.switchboard_, relay_.store_, relay_.ledgers_.at(static_cast<std::size_t>(owner_))));
    co_return relay_.wires_.back()->socket();
}

Task<Result<HttpReply>> ModelRelay::Access::send(HttpRequest request) {
    if (!isReachable) co_return fail(NetworkError{Sentence("síť je nedostupná")});
    auto reply = relay_.calls_.answer(pathOf(request.url), request.body, relay_.clock_.now());
    if (reply.revoked) relay_.switchboard_->revoke(*reply.revoked);
    if (std::exchange(losesReply, false)) co_return fail(NetworkError{Sentence("spojení se přerušilo")});
    co_return HttpReply{static_cast<int>(reply.status), std::move(reply.body)};
}

bool ModelRelay::passAll() {
    bool hasPassed = false;
    for (std::size_t i = 0; i < wires_.size(); ++i) {
        while (wires_[i]->pass(ModelWire::Way::toRelay)) hasPassed = true;
        while (wires_[i]->pass(ModelWire::Way::toDevice)) hasPassed = true;
        wires_[i]->pong();
    }
    return hasPassed;
}

bool ModelRelay::passOneEach() {
    bool hasPassed = false;
    for (std::size_t i = 0; i < wires_.size(); ++i) {
        if (wires_[i]->pass(ModelWire::Way::toRelay)) hasPassed = true;
        if (wires_[i]->pass(ModelWire::Way::toDevice)) hasPassed = true;
        wires_[i]->pong();
    }
    return hasPassed;
}

void ModelRelay::passUnderWay() {
    for (auto way : {ModelWire::Way::toRelay, ModelWire::Way::toDevice})
        for (auto& wire : wires_)
            for (auto waiting = wire->frames(way).size(); waiting > 0; --waiting) wire->pass(way);
}

void ModelRelay::loseDevice(ModelWire::Owner owner, Farewell farewell) {
    for (auto& wire : wires_)
        if (wire->owner() == owner) farewell == Farewell::noticed ? wire->cut() : wire->loseRelay();
}

void ModelRelay::restart() {
    for (auto& wire : wires_) wire->cut();
    forgetDeadWires();
    switchboard_.emplace(bounds);
}

void ModelRelay::forgetDeadWires() {
    std::erase_if(wires_, [](const auto& wire) { return wire->isDead(); });
}

} // namespace morvex
