#include "tests/attack/HostileRelay.h"

#include "shared/wire/Json.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/http/read.hpp>

#include <array>
#include <filesystem>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <utility>

namespace morvex {

namespace asio = boost::asio;
namespace http = boost::beast::http;
namespace websocket = boost::beast::websocket;
using boost::system::error_code;

namespace {

/// One end of a connection, as this function of the system names it; port 0 if the descriptor is none.
asio::ip::tcp::endpoint endOf(int descriptor, int (*nameOf)(int, sockaddr*, socklen_t*)) {
    asio::ip::tcp::endpoint end;
    auto size = static_cast<socklen_t>(end.capacity());
    if (nameOf(descriptor, end.data(), &size) != 0 || end.data()->sa_family != AF_INET) return {};
    return end;
}

} // namespace

bool HostileRelay::Line::accept(const Request& upgrade) {
    error_code error;
    stream_.accept(upgrade, error);
    stream_.auto_fragment(false);
    stream_.read_message_max(0);
    return !error;
}

void HostileRelay::Line::send(std::string_view text) {
    error_code ignored;
    stream_.write(asio::buffer(text), ignored);
}

void HostileRelay::Line::send(RelayMessage message) {
    send(encode(message));
}

bool HostileRelay::Line::sendRaw(std::string_view bytes) {
    error_code error;
    asio::write(stream_.next_layer(), asio::buffer(bytes), error);
    return !error;
}

std::optional<RelayMessage> HostileRelay::Line::receive() {
    boost::beast::flat_buffer buffer;
    error_code error;
    stream_.read(buffer, error);
    if (error) return {};
    return decode<RelayMessage>(boost::beast::buffers_to_string(buffer.data())).value();
}

void HostileRelay::Line::readToTheEnd() {
    while (receive()) {
    }
}

void HostileRelay::Line::takeToTheEnd() {
    std::array<char, 4096> ignored{};
    error_code error;
    while (!error) stream_.next_layer().read_some(asio::buffer(ignored), error);
}

void HostileRelay::Line::cut() {
    // Unlike a close it also ends a write of another thread.
    ::shutdown(stream_.next_layer().native_handle(), SHUT_RDWR);
}

bool HostileRelay::Line::isWritable() {
    pollfd socket{stream_.next_layer().native_handle(), POLLOUT, 0};
    return ::poll(&socket, 1, 0) > 0;
}

HostileRelay::Line::Waiting HostileRelay::Line::waiting() {
    auto& socket = stream_.next_layer();
    Waiting bytes;
    error_code error;
    const auto own = socket.local_endpoint(error);
    const auto other = socket.remote_endpoint(error);
    // The connection has ended.
    if (error || ::ioctl(socket.native_handle(), TIOCOUTQ, &bytes.unsent) != 0) return {};
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const auto descriptor = std::stoi(entry.path().filename().string());
        if (endOf(descriptor, ::getsockname) == other && endOf(descriptor, ::getpeername) == own)
            (void)::ioctl(descriptor, FIONREAD, &bytes.unread);
    }
    return bytes;
}

HostileRelay::HostileRelay()
    : acceptor_(context_, {asio::ip::address_v4::loopback(), 0}),
      port_(acceptor_.local_endpoint().port()),
      thread_([this] { serve(); }) {}

HostileRelay::~HostileRelay() {
    {
        std::lock_guard lock(mutex_);
        ended_ = true;
        ::shutdown(acceptor_.native_handle(), SHUT_RDWR);
        if (played_ >= 0) ::shutdown(played_, SHUT_RDWR);
    }
    thread_.join();
}

std::string HostileRelay::address() const {
    return "http://127.0.0.1:" + std::to_string(port_);
}

void HostileRelay::answerWith(Script script) {
    std::lock_guard lock(mutex_);
    script_ = std::move(script);
}

void HostileRelay::refuseSocketsWith(Script script) {
    std::lock_guard lock(mutex_);
    refusal_ = std::move(script);
}

std::unique_ptr<HostileRelay::Line> HostileRelay::take(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    if (!arrived_.wait_for(lock, patience, [this] { return !lines_.empty(); })) return nullptr;
    auto line = std::move(lines_.front());
    lines_.pop_front();
    return line;
}

int HostileRelay::requests() {
    std::lock_guard lock(mutex_);
    return requests_;
}

bool HostileRelay::waitForRequests(int count, std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    return arrived_.wait_for(lock, patience, [this, count] { return requests_ >= count; });
}

std::string HostileRelay::frameHead(unsigned char first, std::uint64_t length) {
    std::string head{static_cast<char>(first), 127};
    for (int shift = 56; shift >= 0; shift -= 8) head += static_cast<char>(length >> shift & 0xff);
    return head;
}

void HostileRelay::reply(Socket& socket, int status, std::string_view body, std::string_view headers) {
    auto text = "HTTP/1.1 " + std::to_string(status) +
                " X\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
                std::string(headers) + "\r\n" + std::string(body);
    error_code ignored;
    asio::write(socket, asio::buffer(text), ignored);
}

void HostileRelay::serve() {
    for (;;) {
        error_code error;
        Socket socket(context_);
        acceptor_.accept(socket, error);
        {
            std::lock_guard lock(mutex_);
            if (ended_ || error) return;
            played_ = socket.native_handle();
        }
        play(std::move(socket));
    }
}

void HostileRelay::play(Socket socket) {
    error_code error;
    boost::beast::flat_buffer buffer;
    Request request;
    http::read(socket, buffer, request, error);
    std::unique_lock lock(mutex_);
    if (!error) ++requests_;
    arrived_.notify_all();
    const bool isUpgrade = !error && websocket::is_upgrade(request);
    auto script = isUpgrade ? refusal_ : script_;
    lock.unlock();
    if (isUpgrade && !script) {
        auto line = std::make_unique<Line>(std::move(socket));
        if (!line->accept(request)) return;
        lock.lock();
        played_ = -1;
        lines_.push_back(std::move(line));
        arrived_.notify_all();
        return;
    }
    if (!error && script) script(socket, request);
    if (!error && !script) reply(socket, 404, "");
    lock.lock();
    played_ = -1;
    socket.shutdown(Socket::shutdown_both, error);
}

} // namespace morvex
