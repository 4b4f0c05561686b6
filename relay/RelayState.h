#pragma once

#include "relay/EventLog.h"
#include "relay/OriginLimit.h"
#include "relay/PairCalls.h"
#include "relay/PairStore.h"
#include "relay/Places.h"
#include "relay/RelayLimits.h"
#include "relay/RelayLog.h"
#include "relay/Switchboard.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace morvex {

class SocketSession;

/// What all connections of one relay share. Made by the server, which the connections may outlive by a
/// moment; one thread.
struct RelayState {
    RelayState(const RelayLimits& given, PairStore pairs, RelayLog sink)
        : limits(given), store(std::move(pairs)), log(std::move(sink)) {}

    const RelayLimits limits;
    PairStore store;
    PairCalls calls{store};
    Switchboard switchboard{{limits.frame, limits.waiting, limits.heldInAll}};
    Places places{Places::Bounds::of(limits.connections, limits.firstByte)};
    OriginLimit connectionLimit{limits.connectionsPerMinute, std::chrono::minutes{1}};
    OriginLimit callLimit{limits.callsPerMinute, std::chrono::minutes{1}};
    OriginLimit creationLimit{limits.pairsPerDay, std::chrono::days{1}};
    OriginLimit loginLimit{limits.loginsPerMinute, std::chrono::minutes{1}};
    RelayLog log;             ///< of the relay itself
    EventLog events{log, {}}; ///< of what others cause
    /// Hears of a pair that is in use.
    std::function<void(const PairID&)> pairUsed = [](const PairID&) {};
    /// The WebSockets that are to be looked after. Dead ones are taken out at the next tick.
    std::vector<std::weak_ptr<SocketSession>> sockets;
};

} // namespace morvex
