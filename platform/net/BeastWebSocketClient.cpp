#include "platform/net/BeastWebSocketClient.h"

#include "platform/net/NetworkCall.h"
#include "platform/net/RequestHeaders.h"
#include "platform/net/WebSocketConnection.h"
#include "platform/net/WebSocketNetwork.h"
#include "shared/base/Try.h"

#include <utility>

namespace morvex {

namespace {

using SharedNetwork = std::shared_ptr<WebSocketNetwork>;
using WeakConnection = std::weak_ptr<WebSocketConnection>;

/// Has the network thread call `operation(arguments..., reply)`, behind all that it was asked for before; the
/// task waits for the reply.
template <class T, class... Arguments>
Task<Result<T>> call(SharedNetwork network, WeakConnection target,
                     void (WebSocketConnection::*operation)(Arguments..., Reply<T>), Arguments... arguments) {
    auto shot = std::make_shared<OneShot<Result<T>>>();
    network->post([target, operation, reply = Reply<T>(shot), ... given = std::move(arguments)]() mutable {
        if (auto connection = target.lock())
            ((*connection).*operation)(std::move(given)..., std::move(reply));
    });
    return answerOf(std::move(shot));
}

/// What the program holds. Its calls do not refer to it, so that it may go while they wait.
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
        return call<void>(network_, connection_, &WebSocketConnection::send, std::move(text));
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
    WeakConnection connection_;
    std::shared_ptr<const ReadingMeter> meter_;
    std::stop_token ended_;
};

using OpenReply = Reply<std::shared_ptr<WebSocket>>;

/// Where the connection of an attempt is noted, on the network thread, for whoever wants to end it.
using Attempt = std::shared_ptr<WeakConnection>;

void begin(const SharedNetwork& network, WebSocketUrl url, WebSocketRequest request, const Attempt& attempt,
           OpenReply reply) {
    boost::asio::ssl::context* tls = nullptr;
    if (url.security == WebSocketUrl::Security::tls) {
        auto loaded = network->tls().get();
        if (!loaded) return reply(std::unexpected(std::move(loaded).error()));
        tls = *loaded;
    }
    auto connection = std::make_shared<WebSocketConnection>(*network, tls, std::move(request));
    *attempt = connection;
    network->adopt(connection);
    connection->open(std::move(url),
                     [network, attempt, reply = std::move(reply)](Result<void> opened) mutable {
                         auto connection = attempt->lock();
                         if (opened) return reply(std::make_shared<BeastWebSocket>(network, connection));
                         if (connection) connection->release();
                         reply(std::unexpected(std::move(opened).error()));
                     });
}

Task<Result<std::shared_ptr<WebSocket>>> open(SharedNetwork network, WebSocketRequest request,
                                              std::stop_token stop) {
    CO_TRY(auto, url, WebSocketUrl::parse(request.url));
    CO_CHECK(checkHeaders(request.headers));
    auto shot = std::make_shared<OneShot<Result<std::shared_ptr<WebSocket>>>>();
    auto attempt = std::make_shared<WeakConnection>();
    network->post([network, url, request = std::move(request), attempt, reply = OpenReply(shot)]() mutable {
        begin(network, std::move(url), std::move(request), attempt, std::move(reply));
    });
    std::stop_callback onStop(stop, [network, attempt] {
        network->post([attempt] {
            if (auto connection = attempt->lock()) connection->close(CloseCode::abnormal);
        });
    });
    co_return co_await answerOf(std::move(shot));
}

} // namespace

BeastWebSocketClient::BeastWebSocketClient(Limits limits, std::string extraAuthorities)
    : network_(std::make_shared<WebSocketNetwork>(limits, std::move(extraAuthorities))) {}

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
