#pragma once

#include "bench/PlainServer.h"
#include "bench/PlainSocket.h"
#include "shared/wire/MacPayload.h"

#include <string>
#include <thread>

namespace morvex {

/// The baseline for a call through the relay: a frame as long as that of the call travels the same two hops
/// unopened, from one socket through a plain server to another, and one as long as that of the result comes
/// back.
class PlainCall {
  public:
    PlainCall(const MacPayload& call, const MacPayload& result);
    ~PlainCall();
    PlainCall(const PlainCall&) = delete;
    PlainCall& operator=(const PlainCall&) = delete;

    /// Sends both frames once. A lost frame ends the program.
    void once();

    [[nodiscard]] std::size_t asked() const { return asked_.size(); } ///< bytes

    [[nodiscard]] std::size_t answered() const { return answered_.size(); }

  private:
    std::string asked_;
    std::string answered_;
    PlainServer server_{PlainServer::Task::forward};
    PlainSocket near_{server_.port()};
    PlainSocket far_{server_.port()};
    std::thread answering_;
};

} // namespace morvex
