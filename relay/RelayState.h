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

/// The state shared by all connections of one relay. Made by the server; connections may live slightly longer
/// than the server. One thread.
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
    RelayLog log;             ///< for events of the relay itself
    EventLog events{log, {}}; ///< for events caused by others
    /// Called for a pair that is in use.
    std::function<void(const PairID&)> pairUsed = [](const PairID&) {};
    /// The WebSockets that need `tick`. Expired ones are removed at the next tick.
    std::vector<std::weak_ptr<SocketSession>> sockets;
};

} // namespace morvex
