#include "bench/ClientProcess.h"
#include "bench/Measure.h"
#include "bench/PlainSocket.h"
#include "bench/RelayPhone.h"
#include "relay/RelayServer.h"

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <cstdio>
#include <deque>
#include <netinet/in.h>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

// Measures how a stranger's flood of connections slows an honest pair at the same relay: the median time of
// its frames and of its logins, compared with the same without a flood, alternating. The relay has its usual
// limits, which here also apply to this computer's addresses.

namespace morvex {
namespace {

constexpr int rounds = 5;
constexpr int framesARound = 2000;
constexpr int loginsARound = 20;
constexpr std::size_t keptOpen = 900;

/// Connects from an address 127.… and sends half a request.
int strangerSocket(std::uint16_t port, std::uint32_t from) {
    const auto address = [](std::uint32_t host, std::uint16_t at) {
        sockaddr_in full{};
        full.sin_family = AF_INET;
        full.sin_port = htons(at);
        full.sin_addr.s_addr = htonl(host);
        return full;
    };
    const auto own = address(from, 0);
    const auto relay = address(INADDR_LOOPBACK, port);
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    constexpr std::string_view half = "GET /v1/ws HTTP/1.1\r\nHost: ";
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0 &&
        ::connect(socket, reinterpret_cast<const sockaddr*>(&relay), sizeof relay) == 0)
        (void)::send(socket, half.data(), half.size(), MSG_NOSIGNAL);
    return socket;
}

/// Connects as fast as possible, from this many networks in turn, until the process ends.
[[noreturn]] void flood(std::uint16_t port, std::uint32_t networks) {
    std::deque<int> sockets;
    for (std::uint32_t count = 0;; ++count) {
        sockets.push_back(strangerSocket(port, 0x7F010001U + ((count % networks) << 8U)));
        if (sockets.size() < keptOpen) continue;
        ::close(sockets.front());
        sockets.pop_front();
    }
}

/// Medians in milliseconds.
struct Honest {
    std::vector<double> frames;
    std::vector<double> logins;
};

class Bench {
  public:
    Bench() : server_(make()), thread_([this] { server_->run(); }) {
        mac_ = phones_[0].logIn(server_->port());
        phone_ = phones_[1].logIn(server_->port());
        require(mac_->read().has_value(), "no presence of the peer");
    }

    ~Bench() {
        server_->stop();
        thread_.join();
    }

    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    [[nodiscard]] std::uint16_t port() const { return server_->port(); }

    void round(Honest& honest) {
        const auto frame = phones_[0].frameFor(phones_[1].identity, 200);
        honest.frames.push_back(median(framesARound, [&] {
            mac_->write(frame);
            require(phone_->read().has_value(), "a frame was lost");
        }));
        honest.logins.push_back(median(loginsARound, [&] { const auto socket = phones_[2].logIn(port()); }));
    }

  private:
    std::unique_ptr<RelayServer> make() {
        auto store = PairStore::open(":memory:").value();
        const auto hourAgo = std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now()) -
                             std::chrono::hours{2};
        const auto keep = [&](const RelayPhone& first, const RelayPhone& second, std::uint8_t token) {
            require(store.create(first.pair, first.member(DeviceRole::mac), Digest{token}, hourAgo) &&
                        store.join(second.pair, second.member(DeviceRole::phone)),
                    "a pair cannot be kept");
        };
        keep(phones_[0], phones_[1], 1);
        keep(phones_[2], phones_[3], 2);
        RelayOptions options;
        options.port = "0";
        RelayLimits limits;
        limits.thisComputer = Origin::ThisComputer::limited;
        limits.loginsPerMinute = 1'000'000; // for the honest address, which is measured
        return RelayServer::create(options, limits, std::move(store), [](std::string_view) {}).value();
    }

    std::array<RelayPhone, 4> phones_{
        {{PairID{"FIRST"}}, {PairID{"FIRST"}}, {PairID{"SECOND"}}, {PairID{"SECOND"}}}};
    std::unique_ptr<RelayServer> server_;
    std::thread thread_;
    std::unique_ptr<PlainSocket> mac_;
    std::unique_ptr<PlainSocket> phone_;
};

void print(const char* what, const Honest& quiet, const Honest& flooded) {
    std::printf("%s: a frame %.3f ms (%.3f ms without it), connecting and logging in %.2f ms (%.2f ms)\n",
                what, median(flooded.frames), median(quiet.frames), median(flooded.logins),
                median(quiet.logins));
}

void bench(const char* what, std::uint32_t networks) {
    Honest quiet;
    Honest flooded;
    for (int count = 0; count < rounds; ++count) {
        // The process must be created before the threads of the relay.
        ClientProcess stranger([networks](ClientProcess::Line& line) {
            const auto port = line.waitForPort();
            std::thread([port, networks] { flood(port, networks); }).detach();
            line.stay();
        });
        Bench relay;
        relay.round(quiet);
        stranger.begin(relay.port());
        relay.round(flooded);
    }
    print(what, quiet, flooded);
}

} // namespace
} // namespace morvex

int main() {
    using namespace morvex;
    bench("a stranger floods from one address", 1);
    bench("a stranger floods from 60,000 networks", 60'000);
}
