#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace morvex {

/// A server on a free port of 127.0.0.1 that plays a script with every connection, one after the other, on a
/// thread of its own. A script ends by returning or by throwing a system error. The destructor cuts the
/// connection that is being played.
class TestServer {
  public:
    using Socket = boost::asio::ip::tcp::socket;
    using Script = std::function<void(Socket&)>;

    explicit TestServer(Script script);
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    [[nodiscard]] std::string authority(const std::string& host = "127.0.0.1") const;
    [[nodiscard]] int connections();

  private:
    void serve();
    void play(Socket socket);

    Script script_;
    boost::asio::io_context context_;
    boost::asio::ip::tcp::acceptor acceptor_;
    const std::uint16_t port_;
    std::mutex mutex_;
    int played_ = -1; ///< the descriptor of the connection that is being played
    int connections_ = 0;
    bool ended_ = false;
    std::thread thread_;
};

/// Closes with a reset instead of an orderly end.
void resetConnection(TestServer::Socket& socket);

/// Reads until the other side has ended the connection, and says how: end of file or a reset.
boost::system::error_code readToTheEnd(TestServer::Socket& socket);

} // namespace morvex
