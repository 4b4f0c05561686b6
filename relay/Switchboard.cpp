#include "relay/Switchboard.h"

#include "relay/FailureFrame.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <utility>

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
        connected_.erase(own->line);
        own->line->end({{}, normalClosure});
        ledger_.weigh(*own->line);
    } else {
        own = std::ranges::find(places, nullptr, &Place::line);
    }
    require(own != places.end(), "a pair has a third device");
    connected_.insert_or_assign(&line, seat.pair);
    ledger_.enter(line);
    *own = {std::move(seat), &line, false};

    auto* peer = peerOf(*own);
    line.deliver(encode(RelayMessage{RelayMessage::Authenticated{peer != nullptr}}));
    ledger_.weigh(line);
    if (!peer) return;
    peer->seat.peer = own->seat.device;
    peer->line->deliver(presenceFrame(true));
    ledger_.weigh(*peer->line);
    balance(*own);
    balance(*peer);
}

void Switchboard::disconnect(Line& line) {
    if (auto* place = placeOf(line)) remove(*place);
}

void Switchboard::receive(Line& line, std::string frame) {
    auto* place = placeOf(line);
    if (!place) return;
    const auto message = decode<RelayMessage>(frame, {bounds_.frame, messageLimits.values});
    const auto* forwarded = message ? message->as<RelayMessage::Forward>() : nullptr;
    if (!forwarded || !isAddressedRight(forwarded->envelope, place->seat))
        return refuse(line, RelayFailure::malformed);
    forward(*place, std::move(frame));
    relieve();
}

void Switchboard::forward(Place& from, std::string frame) {
    if (auto* peer = peerOf(from)) {
        peer->line->deliver(std::move(frame));
        ledger_.weigh(*peer->line);
        balance(*peer);
    } else {
        from.line->deliver(failureFrame(RelayFailure::peerOffline));
    }
    ledger_.weigh(*from.line);
    balance(from);
}

void Switchboard::drained(Line& line) {
    ledger_.weigh(line);
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
        connected_.erase(place.line);
        place.line->end(refusalEnding(RelayFailure::revoked));
        ledger_.weigh(*place.line);
    }
    pairs_.erase(found);
}

void Switchboard::weigh(Line& line) {
    ledger_.weigh(line);
    relieve();
}

void Switchboard::relieve() {
    while (ledger_.sum() > bounds_.heldInAll) {
        auto& line = ledger_.greediest();
        line.end({.lastFrame = {}, .closeCode = tryAgainLater, .freesMemory = true});
        disconnect(line);
        // The line has freed its memory, or is cut off and frees it at once.
        ledger_.leave(line);
    }
}

std::vector<PairID> Switchboard::connectedPairs() const {
    std::vector<PairID> pairs;
    for (const auto& [pair, places] : pairs_) pairs.push_back(pair);
    return pairs;
}

Switchboard::Place* Switchboard::placeOf(Line& line) {
    const auto found = connected_.find(&line);
    if (found == connected_.end()) return nullptr;
    auto& places = pairs_.at(found->second);
    return &*std::ranges::find(places, &line, &Place::line);
}

Switchboard::Place* Switchboard::peerOf(const Place& place) {
    auto& places = pairs_.at(place.seat.pair);
    auto& other = &places[0] == &place ? places[1] : places[0];
    return other.line ? &other : nullptr;
}

void Switchboard::remove(Place& place) {
    auto* peer = peerOf(place);
    connected_.erase(place.line);
    ledger_.weigh(*place.line);
    if (peer) {
        place.line = nullptr;
        peer->line->deliver(presenceFrame(false));
        ledger_.weigh(*peer->line);
        balance(*peer);
    } else {
        pairs_.erase(PairID{place.seat.pair});
    }
}

std::size_t Switchboard::waitingFor(const Place& place) {
    // With a peer connected, this device's frames only make the peer's queue longer; a device that receives
    // slowly is still read, so that its own pings are answered. Without a peer it makes its own queue longer,
    // by the replies that the peer is offline.
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
