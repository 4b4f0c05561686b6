#include "shared/trust/Parovani.h"
#include "shared/trust/Revocation.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "tests/attack/AttackedCompanion.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>

#include <future>
#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// A relay that breaks the rules of the login and of forwarding.
class RelayAttack : public AttackedCompanion {
  protected:
    void challenge(HostileRelay::Line& line, Bytes nonce = toBytes("výzva")) {
        line.say(RelayMessage::Challenge{std::move(nonce), ProtocolVersion::current});
    }

    /// Does a step after the other, each after the network had its turn, until the companion has ended the
    /// connection.
    template <class Step> void expectEndWhile(HostileRelay::Line& line, Step step) {
        auto end = std::async(std::launch::async, [&line] { line.takeToTheEnd(); });
        constexpr int mostSteps = 5000;
        for (int steps = 0; steps < mostSteps && end.wait_for(1ms) != std::future_status::ready; ++steps) {
            step();
            mac->turnNetwork();
        }
        EXPECT_EQ(end.wait_for(0ms), std::future_status::ready) << "the companion stays";
        line.cut();
    }

    /// Sends a genuine call in a session of its own, after changing the text of its envelope.
    void sendChanged(const std::string& field, const std::string& value) {
        auto line = secure();
        auto frame = encode(RelayMessage{RelayMessage::Forward{writeOf("changed.txt")}});
        const auto start = frame.find('"' + field + "\":") + field.size() + 3;
        const auto quoted = frame[start] == '"' ? 1U : 0U;
        const auto end = frame.find_first_of(quoted ? "\"" : ",}", start + quoted) + quoted;
        forgetTrouble();
        frame.replace(start, end - start, value);
        line->send(frame);
        ++tries;
        // The connection ends exactly when the frame cannot be read; else the call is refused and the next
        // served.
        const bool isServedOn = isServed(*line);
        EXPECT_EQ(isServedOn, decode<RelayMessage>(frame).has_value()) << frame;
        const auto shown = trouble();
        if (!isServedOn)
            ++ended_;
        else if (shown.starts_with("Zprávu nejde ověřit: "))
            ++refused_;
        else
            expectRepeat(field, value, shown);
        counted = std::to_string(ended_) + " ended the connection, " + std::to_string(refused_) +
                  " refused in words, " + std::to_string(tries - ended_ - refused_) + " taken for a repeat";
    }

  private:
    /// A counter that is not ahead of the last one is a repeat, which is not reported.
    static void expectRepeat(const std::string& field, const std::string& value, const std::string& shown) {
        EXPECT_EQ(field + value, "counter0") << value << ": " << shown;
        EXPECT_EQ(shown, "none");
    }

    std::size_t ended_ = 0;
    std::size_t refused_ = 0;
};

TEST_F(RelayAttack, ARelayThatSaysNothingIsLeft) {
    for (bool challenges : {false, true}) {
        auto line = connect();
        if (challenges) {
            challenge(*line);
            EXPECT_TRUE(line->receive());
        }
        expectEndWhile(*line, [&] { mac->pass(10s); });
    }
    tries = 2;
}

TEST_F(RelayAttack, AFrameThatNeverEndsAndPingsWithoutPongsEndTheConnection) {
    auto line = logIn();
    line->sendRaw(HostileRelay::frameHead(0x81, 100'000));
    expectEndWhile(*line, [&] {
        line->sendRaw("x");
        mac->pass(1s);
    });
}

TEST_F(RelayAttack, NothingThatMeansSomethingElsewhereIsSigned) {
    const auto mine = EphemeralPrivateKey::generate();
    const auto stranger = DeviceIdentity::generate();
    const std::vector<std::string> texts{
        sessionHelloSignedText({"PAIR"}, identity->deviceID(), mine.publicKey()),
        Parovani::helloSignedText({"PAIR"}, identity->deviceID(), stranger.agreementKey()),
        revocationSignedText({"PAIR"}, phone.identita->deviceID(), identity->deviceID(), mac->clock().now()),
    };
    for (const auto& text : texts) {
        auto line = connect();
        challenge(*line, toBytes(text));
        EXPECT_FALSE(line->receive()) << text;
    }
    tries = texts.size();
}

TEST_F(RelayAttack, OtherVersionsAreRefusedBeforeAnythingIsSigned) {
    const std::vector<std::string> versions{"2.0", "0.4", "-1.4",  "99999999999999999999.0",
                                            "1",   "",    "1.4.0", std::string(4'000'000, '1')};
    for (const auto& version : versions) {
        auto line = connect();
        line->send(R"({"challenge":{"nonce":"AAAA","v":")" + version + "\"}}");
        EXPECT_FALSE(line->receive()) << version.substr(0, 40);
        EXPECT_LT(trouble().size(), 1000U);
    }
    tries = versions.size();
}

TEST_F(RelayAttack, NumbersThatAreNoneMoveNoCounter) {
    tries = 0;
    for (const char* number :
         {"-1", "-0.5", "1.5", "1e400", "-1e400", "NaN", "Infinity", "18446744073709551616", "1e19", "null",
          "true", "\"1\"", "[1]", "{}", "01", "18446744073709551615", "0"})
        sendChanged("counter", number);
}

TEST_F(RelayAttack, DatesOfOtherAgesOpenNothing) {
    tries = 0;
    for (const char* date :
         {"\"9999-12-31T23:59:59Z\"", "\"0000-01-01T00:00:00Z\"", "\"10000-01-01T00:00:00Z\"", "\"\"",
          "\"2026-02-30T00:00:00Z\"", "1e400", "0", "-1", "null"})
        for (const char* field : {"createdAt", "expiresAt"}) sendChanged(field, date);
}

TEST_F(RelayAttack, OtherIdentitiesOpenNothing) {
    tries = 0;
    const auto stranger = DeviceIdentity::generate().deviceID().rawValue;
    for (const auto& field : {"pair", "from", "to", "msgID", "requestID"})
        for (const auto& value :
             {stranger, identity->deviceID().rawValue, std::string(), std::string("PAIR|X")})
            if (std::string(field) != "to" || value != identity->deviceID().rawValue)
                sendChanged(field, '"' + value + '"');
}

TEST_F(RelayAttack, ADuplicateIsDoneOnce) {
    auto line = secure();
    for (const char* name : {"a.txt", "b.txt", "c.txt"}) {
        auto call = writeOf(name);
        for (int i = 0; i < 3; ++i) forward(*line, call);
        written.insert(name);
    }
    EXPECT_EQ(answersUntilStatus(*line).size(), 3U);
    tries = 9;
}

TEST_F(RelayAttack, WhatWasOvertakenIsNotDone) {
    auto line = secure();
    std::vector<Envelope> calls;
    for (const char* name : {"1.txt", "2.txt", "3.txt", "4.txt", "5.txt"}) calls.push_back(writeOf(name));
    for (auto place : {2, 0, 1, 4, 3}) forward(*line, calls[static_cast<std::size_t>(place)]);
    EXPECT_EQ(answersUntilStatus(*line).size(), 2U);
    written = {"3.txt", "5.txt"};
    tries = calls.size();
}

TEST_F(RelayAttack, CallsThatWereKeptBackAreWorthNothingInALaterSession) {
    auto first = secure();
    const auto kept = writeOf("late.txt");
    first->cut();
    auto second = secure();
    forward(*second, kept);
    EXPECT_TRUE(answersUntilStatus(*second).empty());
    EXPECT_TRUE(trouble().starts_with("Zprávu nejde ověřit: ")) << trouble();
}

TEST_F(RelayAttack, ARecordedSessionPlayedAgainGivesNone) {
    auto first = secure();
    const auto hello =
        phone.keyExchangeWith(encode(phone.helloWith(EphemeralPrivateKey::generate().publicKey())));
    const auto call = writeOf("again.txt");
    first->cut();
    auto second = logIn();
    EXPECT_TRUE(second->receive());
    for (int i = 0; i < 3; ++i) {
        forward(*second, hello);
        forward(*second, call);
    }
    untilTrouble("Zprávu nejde ověřit: ");
}

TEST_F(RelayAttack, WhatTheComputerSentIsNoMessageToIt) {
    auto line = logIn();
    auto own = line->receive();
    ASSERT_TRUE(own);
    line->send(*own);
    mac->until([this] {
        return mac->companion().stav().potiz.value() ==
               "Představení protějšku má neplatný podpis. Spojení nešifruju.";
    });
    line->cut();
    line = secure();
    auto status = line->receive();
    ASSERT_TRUE(status);
    line->send(*status);
    EXPECT_TRUE(answersUntilStatus(*line).empty());
    tries = 2;
}

TEST_F(RelayAttack, AStrangersHelloGivesNoSession) {
    auto line = logIn();
    EXPECT_TRUE(line->receive());
    test::PhoneDevice stranger{random, phoneClock, identity->deviceID()};
    forward(*line, stranger.newHello());
    // Under the phone's name, with the stranger's signature.
    auto named = decode<SessionHello>(stranger.newHello().ciphertext).value();
    named.device = phone.identita->deviceID();
    forward(*line, phone.keyExchangeWith(encode(named)));
    forward(*line, phone.keyExchangeWith(encode(phone.helloWith(AgreementPublicKey{}))));
    untilTrouble("Klíč pro spojení nejde odvodit: ");
    EXPECT_FALSE(mac->on([this] { return mac->companion().stav().dostupnost.value().jePouzitelny(); }));
    tries = 3;
}

TEST_F(RelayAttack, BrokenFramesEndTheConnection) {
    const std::vector<std::string> broken{
        std::string("\x83\x01x", 3),                                // a reserved opcode
        std::string("\x8f\x00", 2),                                 // a reserved opcode of control frames
        std::string("\xc1\x01x", 3),                                // compressed without agreement
        std::string("\x81\x81\x00\x00\x00\x00x", 7),                // masked by a server
        std::string("\x80\x01x", 3),                                // a continuation of nothing
        std::string("\x09\x01x", 3),                                // a fragmented ping
        std::string("\x89\x7e\x00\x7e", 4) + std::string(126, 'x'), // a ping that is too long
        std::string("\x88\x01x", 3),                                // half a close code
        std::string("\x88\x02\x03\xed", 4),                         // a close code that must not be sent
        std::string("\x81\x02\xc3\x28", 4),                         // no UTF-8
        std::string("\x81\x7e\x00\x01x", 5),                        // a length not in its shortest form
        std::string("\x01\x01x\x81\x01x", 6),                       // a message within a message
        std::string("\x82\x03\xff\xfe\xfd", 5),                     // bytes that are no frame of the relay
        std::string("\x81\x00", 2),                                 // an empty message
    };
    for (const auto& bytes : broken) {
        auto line = logIn();
        line->sendRaw(bytes);
        line->readToTheEnd();
    }
    tries = broken.size();
}

TEST_F(RelayAttack, ACallInPiecesOfOneByteIsStillOneCall) {
    auto line = secure();
    const auto frame = encode(RelayMessage{RelayMessage::Forward{writeOf("pieces.txt")}});
    for (std::size_t i = 0; i < frame.size(); ++i) {
        const bool isLast = i + 1 == frame.size();
        std::string piece{static_cast<char>((isLast ? 0x80 : 0x00) | (i == 0 ? 0x01 : 0x00)), 1, frame[i]};
        // A control frame may come between the fragments of a message.
        line->sendRaw(piece + (isLast ? "" : std::string("\x89\x00", 2)));
    }
    EXPECT_EQ(answersUntilStatus(*line).size(), 1U);
    written = {"pieces.txt"};
    counted = std::to_string(frame.size()) + " pieces, done once";
}

TEST_F(RelayAttack, AnythingButAWebSocketIsTriedAgainAndNeverFollowed) {
    using Socket = HostileRelay::Socket;
    const auto self = "Location: " + relay.address() + "/v1/ws?v=1.4\r\n";
    const std::vector<std::function<void(Socket&)>> answers{
        [self](Socket& socket) { HostileRelay::reply(socket, 301, "", self); },
        [self](Socket& socket) { HostileRelay::reply(socket, 307, "", self); },
        [](Socket& socket) { HostileRelay::reply(socket, 401, "", "WWW-Authenticate: Basic\r\n"); },
        [](Socket& socket) { HostileRelay::reply(socket, 200, "<html>"); },
        [](Socket& socket) { HostileRelay::reply(socket, 503, std::string(100'000, 'x')); },
        [](Socket& socket) {
            HostileRelay::reply(socket, 101, "", "Upgrade: websocket\r\nSec-WebSocket-Accept: AAAA\r\n");
        },
        [](Socket& socket) {
            boost::system::error_code error;
            const std::string header = "HTTP/1.1 101 X\r\nX-Header: ";
            boost::asio::write(socket, boost::asio::buffer(header), error);
            const std::string more(1024 * 1024, 'x');
            while (!error) boost::asio::write(socket, boost::asio::buffer(more), error);
        },
        [](Socket& socket) {
            boost::system::error_code error;
            boost::asio::write(socket, boost::asio::buffer(std::string("\x16\x03\x01 no HTTP")), error);
        },
        [](Socket&) {},
    };
    for (const auto& answer : answers) {
        const auto before = relay.requests();
        // The relay may still answer when the test has ended.
        relay.refuseSocketsWith([answer](Socket& socket, const auto&) { answer(socket); });
        mac->on([this] { mac->companion().stav().potiz = std::nullopt; });
        for (int i = 0; i < 100 && !relay.waitForRequests(before + 2, 5ms); ++i) mac->pass(31s);
        EXPECT_GE(relay.requests(), before + 2) << "the companion tries again";
    }
    relay.refuseSocketsWith({});
    tries = answers.size();
}

} // namespace
} // namespace morvex
