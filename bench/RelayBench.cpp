#include "bench/ClientProcess.h"
#include "bench/Measure.h"
#include "bench/PlainServer.h"
#include "bench/PlainSocket.h"
#include "bench/RelayPhone.h"
#include "relay/RelayServer.h"
#include "shared/base/Require.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <span>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <vector>

// Measures the relay with as many idle phones as a process may have sockets, at most 20,000, and the cost of
// forwarding a frame, compared with a server of the same library that returns every frame unread. The clients
// are separate processes, so that memory and processor time are those of the server alone.

namespace morvex {
namespace {

constexpr std::size_t wantedPhones = 20'000;
constexpr std::size_t otherDescriptors = 100;
constexpr std::size_t clientProcesses = 4;

using Security = PlainSocket::Security;

/// The relay on a thread of this process.
class Relay {
  public:
    explicit Relay(const std::vector<RelayPhone>& phones, Security security = Security::none)
        : server_(make(phones, security)), thread_([this] { server_->run(); }) {}

    ~Relay() {
        server_->stop();
        thread_.join();
    }

    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    [[nodiscard]] std::uint16_t port() const { return server_->port(); }

    [[nodiscard]] double processorMilliseconds() { return threadProcessorMilliseconds(thread_); }

  private:
    /// The first two phones are a pair; each of the others has no peer.
    static std::unique_ptr<RelayServer> make(const std::vector<RelayPhone>& phones, Security security) {
        auto store = PairStore::open(":memory:").value();
        const auto later = dateFromSeconds(4'000'000'000);
        for (std::size_t index = 0; index < phones.size(); ++index) {
            Digest token{};
            std::copy_n(reinterpret_cast<const std::uint8_t*>(&index), sizeof index, token.begin());
            const auto& phone = phones[index];
            const auto kept =
                index == 1
                    ? store.join(phone.pair, phone.member(DeviceRole::mac)).has_value()
                    : store.create(phone.pair, phone.member(DeviceRole::phone), token, later).has_value();
            require(kept, "a pair cannot be kept");
        }
        RelayOptions options;
        options.port = "0";
        TemporaryFolder certificates;
        if (security == Security::tls) options.tls = issueIn(certificates.path());
        RelayLimits limits;
        // All these pairs have only one device; such pairs get half of the places.
        limits.connections = 2 * phones.size() + otherDescriptors;
        limits.pingAfter = std::chrono::seconds{1};
        return RelayServer::create(options, limits, std::move(store), [](std::string_view) {}).value();
    }

    static RelayOptions::Tls issueIn(const std::filesystem::path& folder) {
        const auto identity = TestAuthority::issueToItself("DNS:localhost");
        const RelayOptions::Tls files{folder / "certificate.pem", folder / "key.pem"};
        std::ofstream(files.certificate) << identity.certificate;
        std::ofstream(files.key) << identity.key;
        return files;
    }

    std::unique_ptr<RelayServer> server_;
    std::thread thread_;
};

/// The wanted number of phones, or as many as a process may have sockets here.
std::size_t possiblePhones() {
    constexpr rlim_t needed = wantedPhones + otherDescriptors;
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    // Only privileged processes may raise the hard limit.
    for (const auto most : {std::max(limit.rlim_max, needed), limit.rlim_max}) {
        limit = {std::min(most, needed), most};
        if (::setrlimit(RLIMIT_NOFILE, &limit) == 0) break;
    }
    return limit.rlim_cur - otherDescriptors;
}

std::vector<RelayPhone> makePhones(std::size_t count) {
    std::vector<RelayPhone> phones;
    for (std::size_t index = 0; index < count; ++index)
        phones.push_back({{"PAIR" + std::to_string(index == 1 ? 0 : index)}});
    return phones;
}

/// Runs until every phone has answered a second ping: from then on the relay allocates nothing more for it.
void beIdle(std::span<const std::unique_ptr<PlainSocket>> sockets) {
    for (const auto& socket : sockets) socket->listen();
    const auto isPinged = [](const auto& socket) { return socket->pings() >= 2; };
    while (!std::ranges::all_of(sockets, isPinged)) PlainSocket::idle(std::chrono::milliseconds{100});
}

void benchIdle(const std::vector<RelayPhone>& phones, Security security) {
    // The processes must be created before the threads of the relay.
    std::vector<ClientProcess> clients;
    for (std::size_t part = 0; part < clientProcesses; ++part)
        clients.emplace_back([&phones, part, security](ClientProcess::Line& line) {
            const auto port = line.waitForPort();
            std::vector<std::unique_ptr<PlainSocket>> sockets;
            for (auto index = part; index < phones.size(); index += clientProcesses)
                sockets.push_back(phones[index].logIn(port, static_cast<std::uint8_t>(part + 1), security));
            line.report();
            beIdle(sockets);
            line.report();
            line.stay();
        });
    // Memory freed by an earlier run must not be reused unnoticed by these phones.
    ::malloc_trim(0);
    Relay relay(phones, security);
    const auto before = residentMebibytes();
    const auto took = milliseconds([&] {
        for (auto& client : clients) client.begin(relay.port());
        for (auto& client : clients) client.waitUntilDone();
    });
    const auto loggedIn = residentMebibytes();
    for (auto& client : clients) client.waitUntilDone();
    const auto after = residentMebibytes();
    std::printf("%zu idle phones%s (of %zu, for as many as there are descriptors) after two pings each: %.0f "
                "MiB resident, %.1f KiB a phone (%.0f MiB before they came, %.0f before the pings); their "
                "logins took %.1f s\n",
                phones.size(), security == Security::tls ? " over TLS" : "", wantedPhones, after,
                (after - before) * 1024 / static_cast<double>(phones.size()), before, loggedIn, took / 1000);
}

/// Sends some frames at a time and then reads as many; both sockets may be the same. The frames in transit
/// stay below the system's buffers, so that neither side blocks.
void pump(PlainSocket& to, PlainSocket& from, const std::string& frame, std::size_t frames) {
    const auto window = std::max<std::size_t>(1, 16 * 1024 / frame.size());
    for (std::size_t sent = 0; sent < frames; sent += window) {
        for (std::size_t index = 0; index < window; ++index) to.write(frame);
        for (std::size_t index = 0; index < window; ++index)
            require(from.read().has_value(), "a frame was lost");
    }
}

/// The relay's processor time for this many frames from one phone to the other.
double forward(const std::vector<RelayPhone>& both, const std::string& frame, std::size_t frames,
               Security security) {
    ClientProcess client([&](ClientProcess::Line& line) {
        const auto port = line.waitForPort();
        auto from = both[0].logIn(port, 1, security);
        auto to = both[1].logIn(port, 1, security);
        require(from->read().has_value(), "no presence of the peer");
        pump(*from, *to, frame, frames);
        line.report();
        line.stay();
    });
    Relay relay(both, security);
    client.begin(relay.port());
    client.waitUntilDone();
    return relay.processorMilliseconds();
}

/// The same for a server that returns every frame unread.
double echo(const std::string& frame, std::size_t frames) {
    ClientProcess client([&](ClientProcess::Line& line) {
        PlainSocket socket(line.waitForPort());
        pump(socket, socket, frame, frames);
        line.report();
        line.stay();
    });
    PlainServer server(PlainServer::Task::echo);
    client.begin(server.port());
    client.waitUntilDone();
    return server.processorMilliseconds();
}

void benchForwarding(const std::vector<RelayPhone>& both, std::size_t content, std::size_t frames) {
    const auto frame = both[0].frameFor(both[1].identity, content);
    const auto relayTook = forward(both, frame, frames, Security::none);
    const auto tlsTook = forward(both, frame, frames, Security::tls);
    const auto echoTook = echo(frame, frames);
    const auto perSecond = [frames](double took) { return static_cast<double>(frames) / took * 1000; };
    std::printf("frames of %zu bytes: relay %.0f a second and core, bare echo %.0f (%.2f times its processor "
                "time); relay over TLS %.0f (%.2f times that of the relay without)\n",
                frame.size(), perSecond(relayTook), perSecond(echoTook), relayTook / echoTook,
                perSecond(tlsTook), tlsTook / relayTook);
}

} // namespace
} // namespace morvex

int main() {
    using namespace morvex;
    const auto phones = makePhones(possiblePhones());
    benchIdle(phones, PlainSocket::Security::none);
    benchIdle(phones, PlainSocket::Security::tls);
    const auto both = makePhones(2);
    benchForwarding(both, 200, 160'000);
    benchForwarding(both, 256 * 1024, 3'200);
}
