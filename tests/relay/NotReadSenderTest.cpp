#include "shared/base/NotReadingPong.h"
#include "tests/relay/RunningRelay.h"
#include "tests/support/RelayClient.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>
#include <gtest/gtest.h>

using namespace morvex;

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
using asio::ip::tcp;

/// A device that sends one frame again and again, and reads meanwhile.
class TirelessSender {
  public:
    TirelessSender(std::uint16_t port, const TestPair& pair)
        : frame_(pair.frame(pair.mac, pair.phone, 1, 750'000)) {
        socket_.next_layer().connect({asio::ip::address_v4::loopback(), port});
        socket_.handshake("localhost", "/v1/ws?v=1.4");
        const auto challenge = decode<RelayMessage>(read()).value();
        const auto answer = pair.authenticate(pair.mac, challenge.as<RelayMessage::Challenge>()->nonce);
        socket_.write(asio::buffer(answer));
        EXPECT_EQ(read(), encode(RelayMessage{RelayMessage::Authenticated{true}}));
    }

    /// Sends until the relay tells that it does not read. False when it does not tell.
    bool isToldThatItIsNotRead() {
        bool isTold = false;
        socket_.control_callback([&](beast::websocket::frame_type type, beast::string_view payload) {
            if (type != beast::websocket::frame_type::pong || payload != notReadingPong) return;
            isTold = true;
            context_.stop();
        });
        socket_.async_read(incoming_, [](beast::error_code, std::size_t) {});
        send();
        context_.run_for(std::chrono::seconds{20});
        return isTold;
    }

  private:
    std::string read() {
        beast::flat_buffer buffer;
        socket_.read(buffer);
        return beast::buffers_to_string(buffer.data());
    }

    void send() {
        socket_.async_write(asio::buffer(frame_), [this](beast::error_code error, std::size_t) {
            if (!error) send();
        });
    }

    std::string frame_;
    beast::flat_buffer incoming_;
    asio::io_context context_;
    beast::websocket::stream<tcp::socket> socket_{context_};
};

} // namespace

TEST(RelayServer, TellsASenderThatItIsNotReadAtPresent) {
    auto limits = RunningRelay::quickLimits();
    limits.waiting = kibibyte;
    RunningRelay relay{limits};
    const auto pair = pairAt(relay.port());
    DeviceSocket phone{relay.port()};
    phone.logIn(pair, pair.phone, false);
    TirelessSender mac{relay.port(), pair};
    EXPECT_TRUE(mac.isToldThatItIsNotRead());
}
