#include "tests/cut/FaultProxy.h"

#include "shared/base/Require.h"
#include "tests/cut/FrameMemory.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <chrono>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <span>
#include <sys/socket.h>
#include <unistd.h>

namespace morvex {

namespace {

using namespace std::chrono_literals;

constexpr int lookUp = 50; ///< milliseconds after which a thread sees that it is to end

sockaddr_in local(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

FileDescriptor newSocket() {
    FileDescriptor made(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    require(static_cast<bool>(made), "no socket");
    return made;
}

void sendAtOnce(const FileDescriptor& socket) {
    int on = 1;
    ::setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

bool sendAll(const FileDescriptor& socket, std::span<const char> bytes) {
    while (!bytes.empty()) {
        auto sent = ::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace

/// One device at the relay; lives on its own thread.
class FaultProxy::Connection {
  public:
    Connection(FaultProxy& proxy, FileDescriptor device, FileDescriptor relay)
        : proxy_(proxy), ends_{std::move(device), std::move(relay)} {
        for (const auto& end : ends_) sendAtOnce(end);
    }

    void run(const std::stop_token& stop) {
        while (!stop.stop_requested() && isCarrying_) {
            std::array<pollfd, 2> watched{};
            for (std::size_t i = 0; i < 2; ++i) watched[i] = {hasEnded_[i] ? -1 : ends_[i].get(), POLLIN, 0};
            ::poll(watched.data(), watched.size(), lookUp);
            for (std::size_t i = 0; i < 2 && isCarrying_; ++i)
                if (watched[i].revents != 0) carryFrom(i, stop);
        }
    }

  private:
    void carryFrom(std::size_t from, const std::stop_token& stop) {
        auto got = ::recv(ends_[from].get(), buffer_.data(), buffer_.size(), 0);
        if (got <= 0) {
            isCarrying_ = false;
            return;
        }
        std::span<const char> bytes(buffer_.data(), static_cast<std::size_t>(got));
        auto before = proxy_.count(bytes.size());
        pass(1 - from, bytes.first(before));
        if (before == bytes.size()) return;
        strike(from, stop);
        if (isCarrying_ && !hasEnded_[from]) pass(1 - from, bytes.subspan(before));
    }

    void pass(std::size_t to, std::span<const char> bytes) {
        while (!bytes.empty() && isCarrying_) {
            auto piece = bytes.first(slices_ > 0 ? std::min(slice_, bytes.size()) : bytes.size());
            piece = piece.first(frames_[to].take(piece));
            isCarrying_ = sendAll(ends_[to], piece);
            if (isRepeating_[to] && frames_[to].isAtEndOfFrame() && isCarrying_) {
                isRepeating_[to] = false;
                isCarrying_ = sendAll(ends_[to], frames_[to].last());
            }
            bytes = bytes.subspan(piece.size());
            if (slices_ > 0 && slices_-- > 0) std::this_thread::sleep_for(pause_);
        }
    }

    void strike(std::size_t from, const std::stop_token& stop) {
        switch (proxy_.fault()) {
        case Fault::cut:
            isCarrying_ = false;
            break;
        case Fault::reset:
            for (const auto& end : ends_) {
                linger atOnce{1, 0};
                ::setsockopt(end.get(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
            }
            isCarrying_ = false;
            break;
        case Fault::halfClosed:
            ::shutdown(ends_[1 - from].get(), SHUT_WR);
            hasEnded_[from] = true;
            break;
        case Fault::stalled:
            for (auto left = 1000ms; left > 0ms && !stop.stop_requested(); left -= 50ms)
                std::this_thread::sleep_for(50ms);
            isCarrying_ = false;
            break;
        case Fault::sliced:
            passIn(1, 500, 0ms);
            break;
        case Fault::slowed:
            passIn(40, 50, 5ms);
            break;
        case Fault::repeated:
            isRepeating_[1 - from] = true;
            break;
        }
    }

    void passIn(std::size_t slice, int slices, std::chrono::milliseconds pause) {
        slice_ = slice;
        slices_ = slices;
        pause_ = pause;
    }

    FaultProxy& proxy_;
    std::array<FileDescriptor, 2> ends_;
    std::array<bool, 2> hasEnded_{};
    std::array<FrameMemory, 2> frames_; ///< towards each end
    std::array<bool, 2> isRepeating_{};
    bool isCarrying_ = true;
    std::size_t slice_ = 1;
    int slices_ = 0; ///< that are still to come
    std::chrono::milliseconds pause_{};
    std::array<char, 4096> buffer_{};
};

struct FaultProxy::Carrier {
    std::atomic<bool> isDone = false;
    std::jthread thread;
};

FaultProxy::FaultProxy(const std::string& relay)
    : listening_(newSocket()),
      relayPort_(static_cast<std::uint16_t>(std::stoi(relay.substr(relay.rfind(':') + 1)))) {
    auto address = local(0);
    require(::bind(listening_.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                ::listen(listening_.get(), SOMAXCONN) == 0,
            "the proxy cannot listen");
    acceptor_ = std::jthread([this](std::stop_token stop) { accept(std::move(stop)); });
}

FaultProxy::~FaultProxy() {
    acceptor_ = {};
    carriers_.clear();
}

std::string FaultProxy::address() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listening_.get(), reinterpret_cast<sockaddr*>(&address), &size);
    return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
}

void FaultProxy::arm(Fault fault, std::size_t bytes) {
    std::lock_guard lock(mutex_);
    fault_ = fault;
    strikesAt_ = bytes;
    carried_ = 0;
}

FaultProxy::Fault FaultProxy::fault() const {
    std::lock_guard lock(mutex_);
    return fault_;
}

std::size_t FaultProxy::carried() const {
    std::lock_guard lock(mutex_);
    return carried_;
}

bool FaultProxy::hasStruck() const {
    std::lock_guard lock(mutex_);
    return carried_ > strikesAt_;
}

std::size_t FaultProxy::count(std::size_t bytes) {
    std::lock_guard lock(mutex_);
    const auto before = std::exchange(carried_, carried_ + bytes);
    return before <= strikesAt_ && carried_ > strikesAt_ ? strikesAt_ - before : bytes;
}

void FaultProxy::accept(std::stop_token stop) {
    while (!stop.stop_requested()) {
        pollfd entry{listening_.get(), POLLIN, 0};
        if (::poll(&entry, 1, lookUp) != 1) continue;
        FileDescriptor device(::accept4(listening_.get(), nullptr, nullptr, SOCK_CLOEXEC));
        auto relay = newSocket();
        auto address = local(relayPort_);
        if (!device || ::connect(relay.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            continue;
        std::erase_if(carriers_, [](const Carrier& carrier) { return carrier.isDone.load(); });
        auto connection = std::make_shared<Connection>(*this, std::move(device), std::move(relay));
        auto& carrier = carriers_.emplace_back();
        carrier.thread =
            std::jthread([connection = std::move(connection), &carrier](const std::stop_token& end) mutable {
                connection->run(end);
                connection.reset();
                carrier.isDone = true;
            });
    }
}

} // namespace morvex
