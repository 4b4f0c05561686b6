#include "tests/support/TestServer.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read.hpp>
#include <boost/system/system_error.hpp>

#include <array>
#include <exception>
#include <sys/socket.h>
#include <utility>

namespace morvex {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

TestServer::TestServer(Script script)
    : script_(std::move(script)),
      acceptor_(context_, tcp::endpoint(asio::ip::address_v4::loopback(), 0)),
      port_(acceptor_.local_endpoint().port()),
      thread_([this] { serve(); }) {}

TestServer::~TestServer() {
    {
        std::lock_guard lock(mutex_);
        ended_ = true;
        ::shutdown(acceptor_.native_handle(), SHUT_RDWR);
        if (played_ >= 0) ::shutdown(played_, SHUT_RDWR);
    }
    thread_.join();
}

std::string TestServer::authority(const std::string& host) const {
    return host + ":" + std::to_string(port_);
}

int TestServer::connections() {
    std::lock_guard lock(mutex_);
    return connections_;
}

void TestServer::serve() {
    for (;;) {
        error_code error;
        tcp::socket socket(context_);
        acceptor_.accept(socket, error);
        {
            std::lock_guard lock(mutex_);
            if (ended_ || error) return;
            played_ = socket.native_handle();
            ++connections_;
        }
        play(std::move(socket));
    }
}

void TestServer::play(Socket socket) {
    try {
        script_(socket);
    } catch (const boost::system::system_error&) {
        // The other side ended the connection: the test sees to whether it should have.
    }
    std::lock_guard lock(mutex_);
    played_ = -1;
    error_code ignored;
    socket.close(ignored);
}

void resetConnection(TestServer::Socket& socket) {
    socket.set_option(asio::socket_base::linger(true, 0));
    socket.close();
}

error_code readToTheEnd(TestServer::Socket& socket) {
    std::array<char, 4096> ignored{};
    error_code error;
    while (!error) socket.read_some(asio::buffer(ignored), error);
    return error;
}

} // namespace morvex
