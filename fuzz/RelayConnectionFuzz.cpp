// Any bytes on a new connection to the relay, through the real HTTP parser and, after an upgrade, the real
// WebSocket parser. The connection's other end is in memory. When the device has gone, nothing may remain of
// the connection.

#include "foundation/Text.h"
#include "relay/HttpSession.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

using namespace morvex;
namespace asio = boost::asio;

namespace {

/// Number of connections that share one relay; its store grows meanwhile.
constexpr int connectionsPerRelay = 2000;

class Relay {
  public:
    /// The relay's output to a device that sends these bytes and disconnects.
    std::string hear(std::string_view input) {
        if (connections_++ % connectionsPerRelay == 0) state_ = freshState();
        connect();
        // A client may use the WebSocket only after the answer.
        const auto head = std::min(input.find("\r\n\r\n"), input.size());
        say(input.substr(0, head + 4));
        say(input.substr(std::min(head + 4, input.size())));
        ::shutdown(device_, SHUT_WR);
        while (context_.poll() > 0) listen();
        listen();
        ::close(device_);
        while (context_.poll() > 0) {
        }
        require(state_->places.taken() == 0, "a connection outlives its device");
        return std::exchange(heard_, {});
    }

  private:
    static std::shared_ptr<RelayState> freshState() {
        return std::make_shared<RelayState>(RelayLimits{}, PairStore::open(":memory:").value(),
                                            [](std::string_view) {});
    }

    void connect() {
        std::array<int, 2> ends{};
        require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) == 0,
                "no sockets");
        device_ = ends[0];
        asio::ip::tcp::socket socket(context_);
        socket.assign(asio::ip::tcp::v4(), ends[1]);
        context_.restart();
        // A socket in memory has no address; this computer's has no limits.
        const auto origin = Origin::of(asio::ip::address_v4::loopback());
        auto place = state_->places.enter(origin, Places::Moment::clock::now());
        asio::co_spawn(context_,
                       HttpSession::serve(std::make_unique<HttpSession>(std::move(socket), nullptr, state_,
                                                                        *std::move(place))),
                       asio::detached);
    }

    void say(std::string_view bytes) {
        // Errors are ignored, since the relay may have closed already.
        if (!bytes.empty()) (void)::send(device_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        while (context_.poll() > 0) listen();
    }

    void listen() {
        std::array<char, 4096> buffer{};
        for (ssize_t count = 0; (count = ::read(device_, buffer.data(), buffer.size())) > 0;)
            heard_.append(buffer.data(), static_cast<std::size_t>(count));
    }

    asio::io_context context_{1};
    std::shared_ptr<RelayState> state_;
    int connections_ = 0;
    int device_ = -1;
    std::string heard_;
};

/// The value of a header in the relay's answer; empty if it is missing.
std::string_view header(std::string_view head, std::string_view name) {
    const auto start = head.find("\r\n" + std::string(name) + ": ");
    if (start == std::string_view::npos) return {};
    const auto value = head.substr(start + name.size() + 4);
    return value.substr(0, value.find("\r\n"));
}

/// The first number in the line; 0 if there is none.
std::uint64_t numberIn(std::string_view line) {
    const auto start = std::min(line.find_first_of("0123456789"), line.size());
    std::uint64_t number = 0;
    const auto read = std::from_chars(line.data() + start, line.data() + line.size(), number);
    return read.ec == std::errc::result_out_of_range ? UINT64_MAX : number;
}

/// Whether the input is a complete request: its head, and as much content as the head announces. Returns
/// false for chunked requests, for folded header lines, and for a first line without a version.
bool isWhole(std::string_view input) {
    const auto end = input.find("\r\n\r\n");
    if (end == std::string_view::npos) return false;
    if (!input.substr(0, input.find("\r\n")).ends_with(" HTTP/1.1")) return false;
    const auto behind = input.size() - end - 4;
    for (auto rest = input.substr(0, end + 2); !rest.empty();) {
        const auto line = rest.substr(0, rest.find("\r\n"));
        rest.remove_prefix(line.size() + 2);
        const auto name = lowerCase(line.substr(0, line.find_first_of(": \t")));
        if (name.empty() || name == "transfer-encoding") return false;
        if (name == "content-length" && numberIn(line) > behind) return false;
    }
    return true;
}

void expectAnAnswer(std::string_view heard, bool hasContent) {
    constexpr std::string_view carryOn = "HTTP/1.1 100 Continue\r\n\r\n";
    if (heard.starts_with(carryOn)) heard.remove_prefix(carryOn.size());
    // The relay asked for the content, which never came.
    if (heard.empty()) return;
    const auto end = heard.find("\r\n\r\n");
    require(end != std::string_view::npos && heard.starts_with("HTTP/1.1 "), "an answer that is none");
    const auto head = heard.substr(0, end + 2);
    const auto status = head.substr(9, 3);
    if (status == "101") return;
    const auto body = heard.substr(end + 4);
    if (status == "204") return require(body.empty(), "an empty answer has content");
    require(header(head, "Content-Type") == "application/json", "an answer in other words");
    require(header(head, "Connection").starts_with("close"), "a second request is invited");
    require(header(head, "Date").ends_with(" GMT"), "an answer without its time");
    // If the first line cannot be read, it is unknown whether content is expected.
    if (!hasContent && (status != "400" || body.empty()))
        return require(body.empty(), "an answer to HEAD has content");
    require(header(head, "Content-Length") == std::to_string(body.size()), "an answer of another length");
    if (status == "200") return require(decode<PripojitOdpoved>(body).has_value(), "a reply names the pair");
    require(status[0] == '4' || status == "501", "the relay has no reason to fail");
    const auto refused = decode<VaporDuvod>(body);
    require(refused && refused->reason, "a refusal has a reason");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Relay relay;
    const auto input = asText({data, size});
    const auto heard = relay.hear(input);
    if (!heard.empty() || isWhole(input)) expectAnAnswer(heard, !input.starts_with("HEAD "));
    return 0;
}
