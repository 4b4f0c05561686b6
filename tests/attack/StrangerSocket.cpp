#include "tests/attack/StrangerSocket.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace morvex {

namespace {

sockaddr_in addressOf(const std::string& host, std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    inet_pton(AF_INET, host.c_str(), &address.sin_addr);
    return address;
}

/// The head of a masked, unfragmented text frame; the length is in its shortest form.
std::string frameHead(std::uint64_t length) {
    const auto form = length < 126 ? 0U : length <= 0xFFFF ? 2U : 8U;
    std::string head{"\x81"};
    head += static_cast<char>(0x80U | (form == 0 ? length : form == 2 ? 126 : 127));
    for (auto byte = form; byte > 0; --byte) head += static_cast<char>(length >> (8 * (byte - 1)));
    return head + std::string(4, '\0');
}

} // namespace

StrangerSocket::StrangerSocket(std::uint16_t port, const std::string& from)
    : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const auto own = addressOf(from, 0);
    const auto relay = addressOf("127.0.0.1", port);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&own), sizeof own), 0) << from;
    EXPECT_EQ(::connect(socket_, reinterpret_cast<const sockaddr*>(&relay), sizeof relay), 0) << from;
}

StrangerSocket::~StrangerSocket() {
    ::close(socket_);
}

void StrangerSocket::say(std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

bool StrangerSocket::hears(std::string_view words) {
    while (!heard_.contains(words)) {
        std::array<char, 4096> buffer;
        const auto count = ::recv(socket_, buffer.data(), buffer.size(), 0);
        if (count <= 0) return false;
        heard_.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return true;
}

void StrangerSocket::logIn(const TestPair& pair, const DeviceIdentity& device) {
    say("GET /v1/ws?v=1.4 HTTP/1.1\r\nHost: localhost\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
        "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n");
    ASSERT_TRUE(hears("}}"));
    const auto text = heard_.substr(heard_.find("{\"challenge\""));
    const auto message = decode<RelayMessage>(text.substr(0, text.find("}}") + 2)).value();
    say(textFrame(pair.authenticate(device, message.as<RelayMessage::Challenge>()->nonce)));
    ASSERT_TRUE(hears("authenticated"));
}

void StrangerSocket::sayUnfinished(std::string_view beginning) const {
    say(frameHead(4U << 20U));
    say(beginning);
}

bool StrangerSocket::isCutOff() const {
    const timeval patience{.tv_sec = 20, .tv_usec = 0};
    EXPECT_EQ(::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience), 0);
    std::array<char, 4096> ignored;
    for (;;) {
        const auto count = ::recv(socket_, ignored.data(), ignored.size(), 0);
        if (count <= 0) return count == 0 || errno == ECONNRESET;
    }
}

std::string StrangerSocket::textFrame(std::string_view text) {
    return frameHead(text.size()) + std::string{text};
}

} // namespace morvex
