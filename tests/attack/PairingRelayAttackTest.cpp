#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "tests/attack/HostileRelay.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/support/Await.h"
#include "tests/support/Effort.h"
#include "tests/support/RealCompanion.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>
#include <zlib.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Socket = HostileRelay::Socket;

constexpr std::size_t mebibyte = 1024 * 1024;

std::string founded(const std::string& fields) {
    return "{" + fields + "}";
}

bool write(Socket& socket, const std::string& bytes) {
    boost::system::error_code error;
    boost::asio::write(socket, boost::asio::buffer(bytes), error);
    return !error;
}

/// Writes the beginning, then `piece` repeatedly until the companion closes the connection.
void writeWithoutEnd(Socket& socket, const std::string& beginning, const std::string& piece) {
    for (bool isTaken = write(socket, beginning); isTaken;) isTaken = write(socket, piece);
}

/// How a relay answers the call that makes a pair.
struct Answer {
    const char* what;
    std::function<void(Socket&)> play;
};

std::function<void(Socket&)> body(int status, std::string text, std::string headers = {}) {
    return [=](Socket& socket) { HostileRelay::reply(socket, status, text, headers); };
}

std::function<void(Socket&)> raw(std::string bytes) {
    return [=](Socket& socket) { write(socket, bytes); };
}

/// A gzip file (RFC 1952) of this many zeros, about a thousandth of their size.
std::string packedZeros(std::size_t count) {
    const std::string zeros(mebibyte, '\0');
    std::string packed(count / 512, '\0');
    z_stream stream{};
    constexpr int gzip = 16;
    require(deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, MAX_WBITS + gzip, MAX_MEM_LEVEL,
                         Z_DEFAULT_STRATEGY) == Z_OK,
            "zlib does not start");
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    for (std::size_t done = 0; done < count; done += zeros.size()) {
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.data()));
        stream.avail_in = static_cast<uInt>(zeros.size());
        deflate(&stream, done + zeros.size() < count ? Z_NO_FLUSH : Z_FINISH);
    }
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

/// A companion that pairs over the real network, at a relay played by the test.
class PairingRelayAttack : public testing::Test {
  protected:
    /// Starts a pairing. Returns the shown failure, or the text of the code.
    std::string pair() {
        auto& state = mac.companion().stav().parovani;
        mac.on([this] { mac.companion().parovani().zacitParovani(); });
        mac.until([&state] { return !state.value().as<StavParovani::Zakladam>(); });
        return mac.on([&state] {
            if (const auto* failed = state.value().as<StavParovani::Chyba>()) return failed->text.czech();
            const auto* waiting = state.value().as<StavParovani::CekamNaTelefon>();
            return waiting ? waiting->qr : std::string();
        });
    }

    void expectRefused(const Answer& answer) {
        const auto before = relay.requests();
        relay.answerWith([&](Socket& socket, const auto&) { answer.play(socket); });
        const auto shown = pair();
        EXPECT_FALSE(Parovani::bundleOf(shown)) << answer.what;
        EXPECT_FALSE(shown.empty()) << answer.what;
        EXPECT_LT(shown.size(), 4000U) << answer.what;
        EXPECT_EQ(relay.requests(), before + 1) << answer.what << ": nothing is followed or tried again";
    }

    void expectRecovery() {
        ZalozitOdpoved honest{{"PAIR"}, "token", mac.clock().now() + 10min};
        relay.answerWith(
            [&](Socket& socket, const auto&) { HostileRelay::reply(socket, 200, encode(honest)); });
        auto bundle = Parovani::bundleOf(pair());
        ASSERT_TRUE(bundle);
        EXPECT_EQ(bundle->pairID, PairID{"PAIR"});
        EXPECT_FALSE(mac.storedPeer());
    }

    void tryAll(const std::string& what, const std::vector<Answer>& answers) {
        for (const auto& answer : answers) expectRefused(answer);
        end(what, answers.size(), "all refused in words");
    }

    /// The end of every test: the companion pairs with an honest relay, and all of it took little memory.
    void end(const std::string& what, std::size_t attacks, const std::string& outcome) {
        expectRecovery();
        tell(what, attacks, outcome + ", recovered, " + expectLittleMemory(memory));
    }

    HostileRelay relay;
    RealCompanion mac{relay.address()};
    const MemoryMeter memory;
};

TEST_F(PairingRelayAttack, RepliesThatAreNoPairMakeNone) {
    const std::string pair = R"("pairID":"P","pairingToken":"t")";
    tryAll(
        "replies to the making of a pair",
        {
            {"nothing", body(200, "")},
            {"no content", body(204, "")},
            {"a page", body(200, "<html>")},
            {"no fields", body(200, "{}")},
            {"no end", body(200, founded(pair))},
            {"a list", body(200, "[" + founded(pair + R"(,"expiresAt":"2030-01-01T00:00:00Z")") + "]")},
            {"a number as pair",
             body(200, R"({"pairID":1,"pairingToken":"t","expiresAt":"2030-01-01T00:00:00Z"})")},
            {"a pair without a name",
             body(200, R"({"pairID":"","pairingToken":"t","expiresAt":"2030-01-01T00:00:00Z"})")},
            {"no token", body(200, R"({"pairID":"P","pairingToken":"","expiresAt":"2030-01-01T00:00:00Z"})")},
            {"a name that fits no code",
             body(200, R"({"pairID":")" + std::string(900'000, 'P') +
                           R"(","pairingToken":"t","expiresAt":"2030-01-01T00:00:00Z"})")},
            {"a token that fits no code",
             body(200, R"({"pairID":"P","pairingToken":")" + std::string(1001, 't') +
                           R"(","expiresAt":"2030-01-01T00:00:00Z"})")},
            {"a number as end", body(200, founded(pair + R"(,"expiresAt":1800000000)"))},
            {"a negative end", body(200, founded(pair + R"(,"expiresAt":-1)"))},
            {"a huge end", body(200, founded(pair + R"(,"expiresAt":1e400)"))},
            {"an end that is none", body(200, founded(pair + R"(,"expiresAt":NaN)"))},
            {"a day that is none", body(200, founded(pair + R"(,"expiresAt":"2030-02-30T00:00:00Z")"))},
            {"an end without zone", body(200, founded(pair + R"(,"expiresAt":"2030-02-20T00:00:00")"))},
            {"another pair behind",
             body(200, founded(pair + R"(,"expiresAt":"2030-01-01T00:00:00Z")") + "{}")},
            {"deep", body(200, std::string(500'000, '['))},
            {"all values", body(
                               200, "[" +
                                        [] {
                                            std::string zeros;
                                            while (zeros.size() < mebibyte - 10) zeros += "0,";
                                            return zeros;
                                        }() +
                                        "0]")},
            {"no UTF-8", body(200, "{\"pairID\":\"\xff\"}")},
        });
}

TEST_F(PairingRelayAttack, RefusalsAreQuotedBrieflyOrByTheirNumber) {
    std::vector<Answer> answers;
    for (int status : {199, 300, 304, 400, 401, 403, 404, 407, 418, 429, 500, 503, 599, 999})
        answers.push_back({"a status", body(status, "{}")});
    answers.push_back({"a long reason", body(400, R"({"reason":")" + std::string(900'000, 'x') + "\"}")});
    std::string character = "a";
    for (int i = 0; i < 400'000; ++i) character += "\u0301";
    answers.push_back({"a reason of one long character", body(400, R"({"reason":")" + character + "\"}")});
    answers.push_back({"a reason with commands", body(400, R"({"reason":"\u001b[2J\nKód pro telefon"})")});
    answers.push_back({"a reason that is a number", body(400, R"({"reason":1e400})")});
    tryAll("refusals of the making of a pair", answers);
}

TEST_F(PairingRelayAttack, RedirectsAreNotFollowed) {
    std::vector<Answer> answers;
    for (int status : {301, 302, 303, 307, 308})
        for (const auto& target : {relay.address() + "/v1/pair/create", std::string("file:///etc/passwd"),
                                   std::string("gopher://127.0.0.1/"), std::string("//example.org/")})
            answers.push_back({"a redirect", body(status, "", "Location: " + target + "\r\n")});
    tryAll("redirects, the endless one among them", answers);
}

TEST_F(PairingRelayAttack, RepliesWithoutEndAreCut) {
    const std::string piece(mebibyte, 'x');
    tryAll("replies without end",
           {
               {"a body without length",
                [&](Socket& socket) { writeWithoutEnd(socket, "HTTP/1.1 200 X\r\n\r\n", piece); }},
               {"a body of all bytes there are",
                [&](Socket& socket) {
                    writeWithoutEnd(socket, "HTTP/1.1 200 X\r\nContent-Length: 9223372036854775807\r\n\r\n",
                                    piece);
                }},
               {"pieces without end",
                [&](Socket& socket) {
                    writeWithoutEnd(socket, "HTTP/1.1 200 X\r\nTransfer-Encoding: chunked\r\n\r\n",
                                    "100000\r\n" + piece + "\r\n");
                }},
               {"a refusal without end",
                [&](Socket& socket) { writeWithoutEnd(socket, "HTTP/1.1 500 X\r\n\r\n", piece); }},
               {"a header without end",
                [&](Socket& socket) { writeWithoutEnd(socket, "HTTP/1.1 200 X\r\nX: ", piece); }},
               {"headers without end",
                [&](Socket& socket) {
                    writeWithoutEnd(socket, "HTTP/1.1 200 X\r\n",
                                    "X-Header: " + std::string(1000, 'x') + "\r\n");
                }},
               {"a first line without end",
                [&](Socket& socket) { writeWithoutEnd(socket, "HTTP/1.1 200 ", piece); }},
           });
}

TEST_F(PairingRelayAttack, ABombThatIsPackedIsNotUnfolded) {
    const auto bomb = packedZeros(std::size_t{1024} * mebibyte);
    EXPECT_LT(bomb.size(), HttpRequest{}.replyLimit) << "it would be refused by its length";
    expectRefused({"a bomb that nobody asked for", body(200, bomb, "Content-Encoding: gzip\r\n")});

    // The same must hold for a client that asks for compressed replies.
    relay.answerWith([&bomb](Socket& socket, const auto&) {
        HostileRelay::reply(socket, 200, bomb, "Content-Encoding: gzip\r\n");
    });
    CurlHttpClient client;
    ThreadExecutor caller("caller");
    HttpRequest request{.url = relay.address()};
    request.headers.emplace_back("Accept-Encoding", "gzip");
    const auto reply = await(caller, client.send(request));
    ASSERT_TRUE(reply) << reply.error().popis().czech();
    EXPECT_EQ(reply->body.size(), bomb.size());
    end("1 GiB of zeros packed into a reply", 2, "left as it is");
}

TEST_F(PairingRelayAttack, AReplyOfOneByteAtATimeEndsAtTheLimitOfTheWholeExchange) {
    mac.http().divideLimits(50);
    expectRefused({"a byte at a time", [](Socket& socket) {
                       for (bool isTaken = write(socket, "HTTP/1.1 200 X\r\n\r\n"); isTaken;) {
                           std::this_thread::sleep_for(5ms);
                           isTaken = write(socket, " ");
                       }
                   }});
    EXPECT_EQ(mac.http().allowed(), 15s);
    mac.http().divideLimits(1);
    end("a reply of one byte at a time", 1, "given up at the limit");
}

TEST_F(PairingRelayAttack, LiesAboutTheLengthAndOtherProtocolsAreFailures) {
    tryAll("broken replies",
           {
               {"nothing at all", raw("")},
               {"half a line", raw("HTTP/1.1 2")},
               {"half a header", raw("HTTP/1.1 200 X\r\nContent-Len")},
               {"less than announced", raw("HTTP/1.1 200 X\r\nContent-Length: 100\r\n\r\n{}")},
               {"a negative length", raw("HTTP/1.1 200 X\r\nContent-Length: -1\r\n\r\n{}")},
               {"a huge length", raw("HTTP/1.1 200 X\r\nContent-Length: 99999999999999999999999\r\n\r\n{}")},
               {"a length of letters", raw("HTTP/1.1 200 X\r\nContent-Length: viele\r\n\r\n{}")},
               {"a piece of huge length",
                raw("HTTP/1.1 200 X\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffffff\r\nx")},
               {"a piece of no length", raw("HTTP/1.1 200 X\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nx")},
               {"a status of letters", raw("HTTP/1.1 OK\r\n\r\n")},
               {"a version of tomorrow", raw("HTTP/9.9 200 X\r\n\r\n")},
               {"mail", raw("220 mail.example ESMTP\r\n")},
               {"bytes", raw(std::string("\x00\x01\x02\xff\xfe", 5))},
               {"a zero in a header", raw(std::string("HTTP/1.1 200 X\r\nX: a\0b\r\n\r\n", 27))},
               {"TLS", raw(std::string("\x15\x03\x01\x00\x02\x02\x28", 7))},
           });
}

TEST_F(PairingRelayAttack, ARelayWithoutTlsAtAnHttpsAddressIsToldNothing) {
    auto address = relay.address();
    address.replace(0, 4, "https");
    mac.on([&] { mac.companion().setRelayAdresa(address); });
    const auto shown = pair();
    EXPECT_FALSE(Parovani::bundleOf(shown));
    EXPECT_EQ(relay.requests(), 0) << "no request in the clear";
    mac.on([&] { mac.companion().setRelayAdresa(relay.address()); });
    end("a relay without TLS at an https address", 1, "refused, told nothing");
}

} // namespace
} // namespace morvex
