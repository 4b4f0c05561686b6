#include "bench/PlainServer.h"

#include "bench/Measure.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <thread>
#include <utility>
#include <vector>

namespace morvex {

namespace asio = boost::asio;
using asio::ip::tcp;

namespace {

constexpr auto asTuple = asio::as_tuple(asio::use_awaitable);

} // namespace

struct PlainServer::Server {
    using Socket = boost::beast::websocket::stream<tcp::socket, false>;

    explicit Server(PlainServer::Task given)
        : task(given), acceptor(context, {asio::ip::address_v4::loopback(), 0}) {
        asio::co_spawn(context, accept(), asio::detached);
        thread = std::thread([this] { context.run(); });
    }

    ~Server() {
        context.stop();
        thread.join();
    }

    asio::awaitable<void> accept() {
        for (;;) {
            auto [failed, connection] = co_await acceptor.async_accept(asTuple);
            if (failed) co_return;
            connection.set_option(tcp::no_delay{true});
            sockets.push_back(std::make_shared<Socket>(std::move(connection)));
            asio::co_spawn(context, serve(sockets.size() - 1), asio::detached);
        }
    }

    asio::awaitable<void> serve(std::size_t index) {
        auto socket = sockets[index];
        socket->auto_fragment(false);
        socket->text(true);
        auto [refused] = co_await socket->async_accept(asTuple);
        boost::beast::flat_buffer frame;
        while (!refused) {
            auto [broken, size] = co_await socket->async_read(frame, asTuple);
            if (broken) co_return;
            auto target = task == PlainServer::Task::echo ? socket : sockets.at(1 - index);
            auto [unsent, sent] = co_await target->async_write(frame.data(), asTuple);
            if (unsent) co_return;
            frame.clear();
        }
    }

    PlainServer::Task task;
    asio::io_context context{1};
    tcp::acceptor acceptor;
    std::vector<std::shared_ptr<Socket>> sockets;
    std::thread thread;
};

PlainServer::PlainServer(Task task) : server_(std::make_unique<Server>(task)) {}

PlainServer::~PlainServer() = default;

std::uint16_t PlainServer::port() const {
    return server_->acceptor.local_endpoint().port();
}

double PlainServer::processorMilliseconds() const {
    return threadProcessorMilliseconds(server_->thread);
}

void PlainServer::stop() {
    asio::post(server_->context, [server = server_.get()] {
        for (const auto& socket : server->sockets) socket->next_layer().close();
    });
}

} // namespace morvex
