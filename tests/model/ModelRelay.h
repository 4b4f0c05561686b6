#pragma once

#include "foundation/Clock.h"
#include "platform/memory/ScriptedSockets.h"
#include "platform/ports/HttpClient.h"
#include "platform/ports/WebSocketClient.h"
#include "relay/PairCalls.h"
#include "relay/PairStore.h"
#include "relay/Switchboard.h"
#include "tests/model/ModelWire.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// The relay of a model: its real parts, with wires instead of a network. Every frame waits on a wire until
/// the model passes it on.
class ModelRelay {
  public:
    /// The access of one device to the relay.
    class Access final : public WebSocketClient, public HttpClient {
      public:
        Access(ModelRelay& relay, ModelWire::Owner owner) : relay_(relay), owner_(owner) {}

        Task<Result<std::shared_ptr<WebSocket>>> connect(WebSocketRequest request,
                                                         std::stop_token stop) override;
        Task<Result<HttpReply>> send(HttpRequest request) override;

        bool isReachable = true;
        bool losesReply = false; ///< loses the reply of the next call, which the relay has carried out

      private:
        ModelRelay& relay_;
        ModelWire::Owner owner_;
    };

    explicit ModelRelay(const Clock& clock);

    [[nodiscard]] std::size_t wires() const { return wires_.size(); }

    /// The index counts from the newest.
    ModelWire& wire(std::size_t index) { return *wires_.at(wires_.size() - 1 - index); }

    /// Passes on everything that waits now. Returns whether there was anything.
    bool passAll();
    /// Passes on one frame per wire and direction. Returns whether there was any.
    bool passOneEach();
    /// Passes on what was sent before now, and nothing that follows from it.
    void passUnderWay();
    /// A device has ended abruptly. Whether the relay notices depends on `farewell`.
    enum class Farewell { noticed, unnoticed };
    void loseDevice(ModelWire::Owner owner, Farewell farewell);

    void setAsleep(ModelWire::Owner owner, bool isAsleep) {
        ledgers_.at(static_cast<std::size_t>(owner)).isAsleep = isAsleep;
    }

    /// Cuts every wire; the relay's data on pairs survive.
    void restart();

    void countAnew() {
        for (auto& ledger : ledgers_) ledger.messages = 0;
    }

    /// How many messages reached this device since `countAnew`.
    [[nodiscard]] std::size_t messagesTo(ModelWire::Owner owner) const {
        return ledgers_.at(static_cast<std::size_t>(owner)).messages;
    }

  private:
    void forgetDeadWires();

    const Clock& clock_;
    PairStore store_;
    int pairs_ = 0;
    PairCalls calls_;
    std::optional<Switchboard> switchboard_;
    std::array<ModelWire::Ledger, 2> ledgers_; ///< by owner
    std::vector<std::unique_ptr<ModelWire>> wires_;
};

} // namespace morvex
