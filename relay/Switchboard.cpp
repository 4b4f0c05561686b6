#include "relay/Switchboard.h"

#include "relay/FailureFrame.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace morvex {

namespace {

constexpr std::uint16_t normalClosure = 1000;
constexpr std::uint16_t tryAgainLater = 1013;

std::string presenceFrame(bool isOnline) {
    return encode(RelayMessage{RelayMessage::PeerOnline{isOnline}});
}

bool isAddressedRight(const Envelope& envelope, const Seat& seat) {
    const bool isForPeer = seat.peer ? envelope.to == *seat.peer : envelope.to != seat.device;
    return envelope.pair == seat.pair && envelope.from == seat.device && isForPeer;
}

} // namespace

void Switchboard::connect(Line& line, Seat seat) {
    auto& places = pairs_[seat.pair];
    auto own = std::ranges::find_if(
        places, [&](const Place& place) { return place.line && place.seat.device == seat.device; });
    if (own != places.end()) {
        pairOf_.erase(own->line);
        own->line->end({{}, normalClosure});
    } else {
        own = std::ranges::find(places, nullptr, &Place::line);
    }
    vyzaduj(own != places.end(), "a pair has a third device");
    pairOf_[&line] = seat.pair;
    *own = {std::move(seat), &line, false};

    auto* peer = peerOf(*own);
    line.deliver(encode(RelayMessage{RelayMessage::Authenticated{peer != nullptr}}));
    if (!peer) return;
    peer->seat.peer = own->seat.device;
    peer->line->deliver(presenceFrame(true));
    balance(*own);
    balance(*peer);
}

void Switchboard::disconnect(Line& line) {
    if (auto* place = placeOf(line)) remove(*place);
}

void Switchboard::receive(Line& line, std::string frame) {
    auto* place = placeOf(line);
    if (!place) return;
    const auto message = decode<RelayMessage>(frame, bounds_.frame);
    const auto* forwarded = message ? message->as<RelayMessage::Forward>() : nullptr;
    if (!forwarded || !isAddressedRight(forwarded->envelope, place->seat))
        return refuse(line, RelayFailure::malformed);
    forward(*place, std::move(frame));
}

void Switchboard::forward(Place& from, std::string frame) {
    if (auto* peer = peerOf(from)) {
        peer->line->deliver(std::move(frame));
        balance(*peer);
    } else {
        from.line->deliver(failureFrame(RelayFailure::peerOffline));
    }
    balance(from);
}

void Switchboard::drained(Line& line) {
    auto* place = placeOf(line);
    if (!place) return;
    balance(*place);
    if (auto* peer = peerOf(*place)) balance(*peer);
}

void Switchboard::refuse(Line& line, RelayFailure code) {
    auto* place = placeOf(line);
    if (!place) return;
    line.end(refusalEnding(code));
    remove(*place);
}

void Switchboard::revoke(const PairID& pair) {
    const auto found = pairs_.find(pair);
    if (found == pairs_.end()) return;
    for (auto& place : found->second) {
        if (!place.line) continue;
        pairOf_.erase(place.line);
        place.line->end(refusalEnding(RelayFailure::revoked));
    }
    pairs_.erase(found);
}

void Switchboard::relieve() {
    std::vector<std::pair<std::size_t, Line*>> lines;
    std::size_t all = 0;
    for (const auto& [line, pair] : pairOf_) {
        lines.emplace_back(line->held(), line);
        all += line->held();
    }
    std::ranges::sort(lines, std::greater{}, &std::pair<std::size_t, Line*>::first);
    for (const auto& [held, line] : lines) {
        if (all <= bounds_.heldInAll) return;
        all -= held;
        line->end({{}, tryAgainLater});
        disconnect(*line);
    }
}

Switchboard::Place* Switchboard::placeOf(Line& line) {
    const auto pair = pairOf_.find(&line);
    if (pair == pairOf_.end()) return nullptr;
    auto& places = pairs_.at(pair->second);
    return &*std::ranges::find(places, &line, &Place::line);
}

Switchboard::Place* Switchboard::peerOf(const Place& place) {
    auto& places = pairs_.at(place.seat.pair);
    auto& other = &places[0] == &place ? places[1] : places[0];
    return other.line ? &other : nullptr;
}

void Switchboard::remove(Place& place) {
    auto* peer = peerOf(place);
    pairOf_.erase(place.line);
    if (peer) {
        place.line = nullptr;
        peer->line->deliver(presenceFrame(false));
        balance(*peer);
    } else {
        pairs_.erase(PairID{place.seat.pair});
    }
}

std::size_t Switchboard::waitingFor(const Place& place) {
    // With a peer, what this device says makes only the peer's queue longer: a slow receiver is still read,
    // so that its own pings are answered. Alone it makes its own queue longer, by the answers that nobody is
    // there.
    const auto* peer = peerOf(place);
    return peer ? peer->line->waiting() : place.line->waiting();
}

void Switchboard::balance(Place& place) {
    const auto waiting = waitingFor(place);
    if (!place.isPaused && waiting > bounds_.waiting) {
        place.isPaused = true;
        place.line->pauseReading();
    } else if (place.isPaused && waiting <= bounds_.waiting / 2) {
        place.isPaused = false;
        place.line->resumeReading();
    }
}

} // namespace morvex
