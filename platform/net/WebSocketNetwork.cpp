#include "platform/net/WebSocketNetwork.h"

#include "platform/net/WebSocketConnection.h"

#include <boost/asio/post.hpp>

#include <utility>

namespace morvex {

WebSocketNetwork::WebSocketNetwork(BeastWebSocketClient::Limits limits, std::string extraAuthorities)
    : limits_(limits),
      tls_(std::move(extraAuthorities)),
      context_(std::in_place, 1),
      work_(context_->get_executor()),
      thread_("websocket") {
    thread_.post([this] { context_->run(); });
}

void WebSocketNetwork::post(Job job) {
    std::lock_guard lock(mutex_);
    if (!stopped_) boost::asio::post(*context_, std::move(job));
}

void WebSocketNetwork::stop() {
    {
        std::lock_guard lock(mutex_);
        stopped_ = true;
        boost::asio::post(*context_, [this] { resetAll(); });
    }
    thread_.close();
    // The thread may have ended before it began to run the context.
    work_.reset();
    context_.reset();
}

void WebSocketNetwork::adopt(std::shared_ptr<WebSocketConnection> connection) {
    connections_.insert(std::move(connection));
}

void WebSocketNetwork::forget(const std::shared_ptr<WebSocketConnection>& connection) {
    connections_.erase(connection);
}

void WebSocketNetwork::resetAll() {
    for (const auto& connection : std::exchange(connections_, {})) connection->close(CloseCode::abnormal);
    work_.reset();
}

} // namespace morvex
