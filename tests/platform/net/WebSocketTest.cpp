#include "tests/platform/net/WebSocketTest.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>

namespace morvex {

std::string WebSocketTest::read(Peer& peer) {
    boost::beast::flat_buffer buffer;
    peer.read(buffer);
    return boost::beast::buffers_to_string(buffer.data());
}

void WebSocketTest::write(Peer& peer, const std::string& text) {
    peer.write(boost::asio::buffer(text));
}

void WebSocketTest::echo(TestServer::Socket& socket) {
    auto peer = accept(socket);
    for (;;) {
        auto message = read(peer);
        peer.text(peer.got_text());
        write(peer, message);
    }
}

std::shared_ptr<WebSocket> WebSocketTest::connect(const TestServer& server) {
    auto socket = await(executor_, client_->connect({"ws://" + server.authority() + "/v1/ws?v=1.4"}, {}));
    require(socket.has_value(), "the test's server cannot be reached");
    return *std::move(socket);
}

std::string WebSocketTest::connectFailure(const std::string& url) {
    return failureOf(await(executor_, client_->connect({url}, {})));
}

} // namespace morvex
