#pragma once

#include "relay/PairCalls.h"
#include "relay/PairStore.h"
#include "relay/RateLimit.h"
#include "relay/RelayLimits.h"
#include "relay/RelayLog.h"
#include "relay/Switchboard.h"

#include <memory>
#include <utility>
#include <vector>

namespace morvex {

class SocketSession;

/// What all connections of one relay share. Made by the server, which the connections may outlive by a
/// moment; one thread.
struct RelayState {
    RelayState(RelayLimits given, PairStore pairs, RelayLog sink)
        : limits(given), store(std::move(pairs)), log(std::move(sink)) {}

    const RelayLimits limits;
    PairStore store;
    PairCalls calls{store};
    Switchboard switchboard{{limits.frame, limits.waiting, limits.heldInAll}};
    RateLimit rateLimit{limits.callsPerMinute};
    RelayLog log;
    std::size_t connections = 0;
    /// The WebSockets that are to be looked after. Dead ones are taken out at the next tick.
    std::vector<std::weak_ptr<SocketSession>> sockets;
};

/// Counts one connection for as long as it lives.
class ConnectionSlot {
  public:
    explicit ConnectionSlot(std::shared_ptr<RelayState> state) : state_(std::move(state)) {
        ++state_->connections;
    }

    ConnectionSlot(ConnectionSlot&&) = default;
    ConnectionSlot& operator=(ConnectionSlot&&) = delete;

    ~ConnectionSlot() {
        if (state_) --state_->connections;
    }

  private:
    std::shared_ptr<RelayState> state_;
};

} // namespace morvex
