#include "app/mail/protocol/MacMailConnection.h"

#include "app/mail/protocol/MacMailOnce.h"
#include "app/mail/protocol/MacMailProtocolError.h"
#include "tests/app/mail/protocol/HeldTls.h"
#include "tests/app/mail/protocol/MailParts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

constexpr auto failed = "Spojení s poštovním serverem selhalo: ";

TEST(MacMailOnce, IsTrueTheFirstTimeAlone) {
    MacMailOnce once;
    EXPECT_TRUE(once.first());
    EXPECT_FALSE(once.first());
    EXPECT_FALSE(once.first());
}

class MacMailConnectionTest : public testing::Test {
  protected:
    void open() { ASSERT_EQ(told(parts.end(connection.otevrit())), "ok"); }

    /// What a call came to, in quotes, or the words of its failure.
    template <class T> static std::string told(const std::optional<Result<T>>& result) {
        if (!result) return "waits";
        if (!*result) return result->error().popis().czech();
        if constexpr (std::is_same_v<T, std::string>)
            return "'" + **result + "'";
        else
            return "ok";
    }

    template <class T> static std::string told(const Result<T>& result) {
        return told(std::optional<Result<T>>(result));
    }

    void advance(Clock::Duration by) {
        parts.clock.advance(by);
        parts.settle();
    }

    void deliver(const std::string& bytes) {
        parts.server->deliver(bytes);
        parts.settle();
    }

    MailParts parts;
    std::stop_source stop;
    MacMailConnection connection{parts.services, "mail.cz", 993, stop.get_token()};
};

TEST_F(MacMailConnectionTest, ConnectsToItsHostAndPort) {
    EXPECT_FALSE(connection.isOpen());
    open();
    EXPECT_TRUE(connection.isOpen());
    EXPECT_EQ(parts.tls.asked, std::vector{"mail.cz:993"s});
    EXPECT_EQ(parts.clock.waiting(), 0U) << "no timer is left behind";
}

TEST_F(MacMailConnectionTest, SendsALineWithItsEndInOnePiece) {
    open();
    EXPECT_EQ(told(parts.end(connection.send("A0001 NOOP"))), "ok");
    EXPECT_EQ(parts.server->sent, std::vector{"A0001 NOOP\r\n"s});
    EXPECT_EQ(parts.clock.waiting(), 0U);
}

TEST_F(MacMailConnectionTest, GivesLinesAndCountedBytes) {
    open();
    parts.server->deliver("* {3}\r\na\r");
    parts.server->deliver("\n)\r\r\n\n\xe8\n");
    EXPECT_EQ(told(parts.end(connection.receive())), "'* {3}'");
    EXPECT_EQ(told(parts.end(connection.cist(3))), "'a\r\n'");
    EXPECT_EQ(told(parts.end(connection.receive())), "')'") << "line ends at both ends are cut";
    EXPECT_EQ(told(parts.end(connection.receive())), "''");
    EXPECT_EQ(told(parts.end(connection.receive())), "'\uFFFD'");
    EXPECT_EQ(told(parts.end(connection.cist(0))), "''");
    EXPECT_EQ(parts.clock.waiting(), 0U);
}

TEST_F(MacMailConnectionTest, GivesUpConnectingAfter15Seconds) {
    HeldTls held;
    MacMailConnection late({held, parts.clock, parts.workers}, "mail.cz", 993, {});
    const auto result = parts.begin(late.otevrit());
    advance(15s - 1ms);
    EXPECT_EQ(told(*result), "waits");
    advance(1ms);
    EXPECT_EQ(told(*result), failed + "Server se do 15 sekund nepřipojil."s);
    EXPECT_EQ(held.attempts, 1);
}

TEST_F(MacMailConnectionTest, TellsWhyTheNetworkRefused) {
    open();
    MacMailConnection second(parts.services, "mail.cz", 993, {});
    EXPECT_EQ(told(parts.end(second.otevrit())), failed + "spojení odmítnuto"s);
    EXPECT_FALSE(second.isOpen());
}

TEST_F(MacMailConnectionTest, ALineHas15Seconds) {
    open();
    const auto result = parts.begin(connection.receive());
    advance(10s);
    deliver("half of ");
    advance(5s - 1ms);
    deliver("a line");
    EXPECT_EQ(told(*result), "waits");
    EXPECT_FALSE(parts.server->isClosed);
    advance(1ms);
    EXPECT_EQ(told(*result), failed + "Server neodpověděl."s) << "however much of it has arrived";
    EXPECT_TRUE(parts.server->isClosed);
    EXPECT_FALSE(connection.isOpen());
}

TEST_F(MacMailConnectionTest, ALiteralHas15SecondsWithoutDataAnd60InAll) {
    open();
    const auto result = parts.begin(connection.cist(6));
    for (const auto* byte : {"a", "b", "c", "d"}) {
        advance(15s - 1ms);
        deliver(byte);
    }
    EXPECT_EQ(told(*result), "waits");
    advance(4ms);
    EXPECT_EQ(told(*result), failed + "Server neodpověděl."s);
    EXPECT_TRUE(parts.server->isClosed);
}

TEST_F(MacMailConnectionTest, ALiteralThatStopsArrivingFailsAfter15Seconds) {
    open();
    const auto result = parts.begin(connection.cist(6));
    deliver("abcde");
    advance(15s - 1ms);
    EXPECT_EQ(told(*result), "waits");
    advance(1ms);
    EXPECT_EQ(told(*result), failed + "Server neodpověděl."s);
}

/// A connection whose other end takes nothing.
class StuckConnection final : public TlsConnection {
  public:
    Task<Result<void>> send(std::string) override {
        co_await closed_.wait();
        co_return fail(NetworkError{Sentence("zavřeno")});
    }

    Task<Result<std::string>> receive() override { co_return std::string(); }

    void close() override { closed_.answer(true); }

  private:
    OneShot<bool> closed_;
};

class StuckTls final : public TlsClient {
  public:
    Task<Result<std::shared_ptr<TlsConnection>>> connect(std::string, std::uint16_t,
                                                         std::stop_token) override {
        std::shared_ptr<TlsConnection> connection = std::make_shared<StuckConnection>();
        co_return connection;
    }
};

TEST_F(MacMailConnectionTest, AServerHas15SecondsToTakeALine) {
    StuckTls stuck;
    MacMailConnection other({stuck, parts.clock, parts.workers}, "mail.cz", 993, {});
    ASSERT_EQ(told(parts.end(other.otevrit())), "ok");
    const auto result = parts.begin(other.send("x"));
    advance(15s - 1ms);
    EXPECT_EQ(told(*result), "waits");
    advance(1ms);
    EXPECT_EQ(told(*result), failed + "Server nepřijal data."s);
    EXPECT_FALSE(other.isOpen());
}

TEST_F(MacMailConnectionTest, TellsTheEndOfTheStream) {
    open();
    parts.server->deliver("half");
    parts.server->endStream();
    EXPECT_EQ(told(parts.end(connection.receive())), failed + "Server spojení ukončil."s);
}

TEST_F(MacMailConnectionTest, TellsAFailureOfTheNetworkInItsWords) {
    open();
    parts.server->breakWith(Sentence("kabel"));
    EXPECT_EQ(told(parts.end(connection.cist(1))), failed + "kabel"s);
}

TEST_F(MacMailConnectionTest, ALineOfMoreThan64KiBIsAProtocolError) {
    open();
    parts.server->deliver(std::string(65'534, 'x') + "\r\n");
    EXPECT_EQ(told(parts.end(connection.receive())).size(), 65'534U + 2);
    parts.server->deliver(std::string(65'535, 'x') + "\r\n");
    const auto refused = parts.end(connection.receive());
    ASSERT_FALSE(refused);
    EXPECT_EQ(*refused.error().as<MacMailProtocolError>(),
              MacMailProtocolError::protocolError(Sentence("Odpověď serveru je příliš dlouhá.")));
    EXPECT_TRUE(parts.server->isClosed);
}

TEST_F(MacMailConnectionTest, AStopClosesIt) {
    open();
    const auto result = parts.begin(connection.receive());
    stop.request_stop();
    parts.settle();
    EXPECT_EQ(told(*result), failed + "Spojení bylo zrušeno."s);
    EXPECT_TRUE(parts.server->isClosed);
    EXPECT_EQ(told(parts.end(connection.send("x"))), failed + "Spojení bylo zrušeno."s);
    EXPECT_TRUE(parts.server->sent.empty());
}

TEST_F(MacMailConnectionTest, AStopEndsTheAttemptToConnect) {
    HeldTls held;
    MacMailConnection late({held, parts.clock, parts.workers}, "mail.cz", 993, stop.get_token());
    const auto result = parts.begin(late.otevrit());
    stop.request_stop();
    parts.settle();
    EXPECT_EQ(told(*result), failed + "Spojení bylo zrušeno."s);
}

TEST_F(MacMailConnectionTest, AClosedOneFailsEveryCall) {
    open();
    connection.zavrit();
    connection.zavrit();
    EXPECT_TRUE(parts.server->isClosed);
    EXPECT_EQ(told(parts.end(connection.send("x"))), failed + "Spojení bylo zrušeno."s);
    EXPECT_EQ(told(parts.end(connection.receive())), failed + "Spojení bylo zrušeno."s);
    EXPECT_EQ(told(parts.end(connection.cist(1))), failed + "Spojení bylo zrušeno."s);
    EXPECT_TRUE(parts.server->sent.empty());
}

TEST_F(MacMailConnectionTest, ClosesWhenItGoes) {
    {
        MacMailConnection own(parts.services, "mail.cz", 465, {});
        ASSERT_EQ(told(parts.end(own.otevrit())), "ok");
    }
    EXPECT_TRUE(parts.server->isClosed);
}

} // namespace
} // namespace morvex
