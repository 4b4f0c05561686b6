#include "tests/shared-apple/LoopbackRelay.h"

#include "platform/ports/NetworkError.h"
#include "shared/trust/Crypto.h"
#include "shared/wire/Json.h"

#include <optional>
#include <utility>

namespace morvex::test {

namespace {

const Bytes nonce = toBytes("výzva");

} // namespace

class LoopbackRelay::Socket final : public WebSocket {
  public:
    explicit Socket(LoopbackRelay& relay) : relay_(relay) {}

    ~Socket() override { relay_.leave(*this); }

    Task<Result<void>> sendText(std::string text) override {
        relay_.receive(*this, decode<RelayMessage>(text).value());
        co_return Result<void>{};
    }

    Task<Result<WebSocketFrame>> receive() override {
        auto frame = co_await incoming_.next();
        if (!frame) co_return fail(NetworkError{Sentence("spojení je zavřené")});
        co_return *std::move(frame);
    }

    Task<Result<void>> ping() override { co_return Result<void>{}; }

    [[nodiscard]] Reading reading() const override { return {}; }

    [[nodiscard]] std::stop_token ended() const override { return ended_.get_token(); }

    void close(CloseCode) override {
        relay_.leave(*this);
        incoming_.end();
        ended_.request_stop();
    }

    template <class Case> void deliver(Case content) {
        incoming_.push({WebSocketFrame::Kind::text, encode(RelayMessage{std::move(content)})});
    }

    /// Set by the login, under the relay's lock.
    std::optional<DeviceID> device;

  private:
    LoopbackRelay& relay_;
    EventStream<WebSocketFrame> incoming_;
    std::stop_source ended_;
};

Task<Result<std::shared_ptr<WebSocket>>> LoopbackRelay::connect(WebSocketRequest, std::stop_token) {
    auto socket = std::make_shared<Socket>(*this);
    socket->deliver(RelayMessage::Challenge{nonce, ProtocolVersion::current});
    co_return std::shared_ptr<WebSocket>(std::move(socket));
}

void LoopbackRelay::receive(Socket& from, const RelayMessage& message) {
    std::lock_guard lock(mutex_);
    if (auto* login = message.as<RelayMessage::Authenticate>()) return logIn(from, *login);
    auto* forward = message.as<RelayMessage::Forward>();
    if (!forward || !from.device) return;
    if (auto* peer = peerOf(*from.device))
        peer->deliver(*forward);
    else
        from.deliver(RelayMessage::Failure{RelayFailure::peerOffline, "Protějšek tu není."});
}

void LoopbackRelay::logIn(Socket& socket, const RelayMessage::Authenticate& login) {
    if (!ed25519Verify(login.signature, nonce, login.key.raw))
        return socket.deliver(RelayMessage::Failure{RelayFailure::badSignature, "Podpis nesedí."});
    socket.device = login.device;
    online_[login.device] = &socket;
    auto* peer = peerOf(login.device);
    socket.deliver(RelayMessage::Authenticated{peer != nullptr});
    if (peer) peer->deliver(RelayMessage::PeerOnline{true});
}

void LoopbackRelay::leave(Socket& socket) {
    std::lock_guard lock(mutex_);
    auto device = std::exchange(socket.device, std::nullopt);
    if (!device) return;
    auto found = online_.find(*device);
    if (found == online_.end() || found->second != &socket) return;
    online_.erase(found);
    if (auto* peer = peerOf(*device)) peer->deliver(RelayMessage::PeerOnline{false});
}

LoopbackRelay::Socket* LoopbackRelay::peerOf(const DeviceID& device) {
    for (const auto& [other, socket] : online_)
        if (other != device) return socket;
    return nullptr;
}

} // namespace morvex::test
