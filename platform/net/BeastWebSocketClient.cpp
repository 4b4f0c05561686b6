#include "platform/net/BeastWebSocketClient.h"

#include "platform/net/NetworkConnection.h"
#include "platform/net/RequestHeaders.h"
#include "platform/net/WebSocketConnection.h"
#include "shared/base/Try.h"

#include <utility>

namespace morvex {

namespace {

/// The handle that the program holds. Waiting calls do not refer to it, so it may be destroyed while they
/// wait.
class BeastWebSocket final : public WebSocket {
  public:
    BeastWebSocket(SharedNetwork network, const std::shared_ptr<WebSocketConnection>& connection)
        : network_(std::move(network)),
          connection_(connection),
          meter_(connection->meter()),
          ended_(connection->ended()) {}

    ~BeastWebSocket() override {
        network_->post([target = connection_] {
            if (auto connection = target.lock()) connection->release();
        });
    }

    Task<Result<void>> sendText(std::string text) override {
        return callNow<void>(network_, connection_, &WebSocketConnection::send, std::move(text));
    }

    Task<Result<WebSocketFrame>> receive() override {
        return call<WebSocketFrame>(network_, connection_, &WebSocketConnection::receive);
    }

    Task<Result<void>> ping() override {
        return call<void>(network_, connection_, &WebSocketConnection::ping);
    }

    [[nodiscard]] Reading reading() const override { return meter_->reading(); }

    [[nodiscard]] std::stop_token ended() const override { return ended_; }

    void close(CloseCode code) override {
        network_->post([target = connection_, code] {
            if (auto connection = target.lock()) connection->close(code);
        });
    }

  private:
    SharedNetwork network_;
    std::weak_ptr<WebSocketConnection> connection_;
    std::shared_ptr<const ReadingMeter> meter_;
    std::stop_token ended_;
};

/// Does not refer to the client, which may go while this waits.
Task<Result<std::shared_ptr<WebSocket>>> open(SharedNetwork network, WebSocketRequest request,
                                              std::stop_token stop) {
    CO_TRY(auto, url, WebSocketUrl::parse(request.url));
    CO_CHECK(checkHeaders(request.headers));
    auto make = [url, request = std::move(request)](
                    NetworkThread& thread) -> Result<std::shared_ptr<WebSocketConnection>> {
        boost::asio::ssl::context* tls = nullptr;
        if (url.security == WebSocketUrl::Security::tls) {
            TRY(auto* const, loaded, thread.tls().get());
            tls = loaded;
        }
        return std::make_shared<WebSocketConnection>(thread, tls, url, request);
    };
    co_return co_await openConnection<WebSocket, BeastWebSocket, WebSocketConnection>(
        std::move(network), std::move(make), std::move(stop));
}

} // namespace

BeastWebSocketClient::BeastWebSocketClient(NetworkLimits limits, std::string extraAuthorities)
    : network_(std::make_shared<NetworkThread>("spojeni", limits, std::move(extraAuthorities))) {}

BeastWebSocketClient::~BeastWebSocketClient() {
    network_->stop();
}

Task<Result<std::shared_ptr<WebSocket>>> BeastWebSocketClient::connect(WebSocketRequest request,
                                                                       std::stop_token stop) {
    return open(network_, std::move(request), std::move(stop));
}

Executor& BeastWebSocketClient::executor() {
    return *network_;
}

} // namespace morvex
