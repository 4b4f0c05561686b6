#include "app/mail/protocol/MacSMTPClient.h"

#include "app/mail/protocol/MacMailProtocolError.h"
#include "platform/memory/FixedLocalTime.h"
#include "shared/base/Base64.h"
#include "tests/app/mail/protocol/MailParts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

constexpr auto refusedLogin = "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.";
constexpr auto failed = "Spojení s poštovním serverem selhalo: ";

std::string inBase64(const std::string& text) {
    return base64Encode(asBytes(text));
}

/// A step of the dialogue: what is sent, and the code that answers it.
struct Step {
    std::string sent; ///< without the end of its line
    std::string code; ///< empty if nothing answers
};

const std::vector<Step> dialogue{
    {"", "220"},
    {"EHLO morvex.local", "250"},
    {"AUTH LOGIN", "334"},
    {"amFuYUBiLmN6", "334"},
    {inBase64("tajné\"he\\slo"), "235"},
    {"MAIL FROM:<jana@b.cz>", "250"},
    {"RCPT TO:<petr@c.cz>", "250"},
    {"DATA", "354"},
    {"(the message)", ""},
    {".", "250"},
    {"QUIT", "221"},
};

/// One sending, with a server of its own.
struct Sending {
    MailParts parts;
    FixedLocalTime prague;
    std::stop_source stop;
    MacSMTPClient client{{parts.tls, parts.clock, parts.workers, &prague},
                         "smtp.b.cz",
                         "jana@b.cz",
                         "tajné\"he\\slo",
                         "jana@b.cz",
                         "Jana",
                         stop.get_token()};
    std::shared_ptr<std::optional<Result<void>>> result;

    void begin(const std::string& to = "petr@c.cz") { result = parts.begin(client.send(to, "Věc", "Text.")); }

    void say(const std::string& lines) {
        parts.server->deliver(lines);
        parts.settle();
    }

    [[nodiscard]] std::string outcome() const { return *result ? told(**result) : "waits"; }

    /// Runs the dialogue, with another reply at one step, and says how it ended.
    std::string runWith(std::size_t otherStep, const std::string& otherReply) {
        begin();
        for (std::size_t step = 0; step < dialogue.size() && outcome() == "waits"; ++step)
            if (!dialogue[step].code.empty())
                say(step == otherStep ? otherReply : dialogue[step].code + " fine\r\n");
        return outcome();
    }
};

TEST(MacSMTPClient, SendsAMessageStepByStep) {
    Sending sending;
    sending.begin();
    std::vector<std::string> expected;
    for (const auto& [sent, code] : dialogue) {
        if (!sent.empty()) expected.push_back(sent);
        if (code.empty()) continue;
        auto lines = sending.parts.sent();
        if (lines.size() > 7) lines[7] = "(the message)";
        EXPECT_EQ(lines, expected) << "before the reply " << code;
        EXPECT_EQ(sending.outcome(), "waits");
        sending.say(code + "-" + "more\r\n" + code + " fine\r\n");
    }
    EXPECT_EQ(sending.outcome(), "ok");
    EXPECT_EQ(sending.parts.tls.asked, std::vector{"smtp.b.cz:465"s});
    EXPECT_TRUE(sending.parts.server->isClosed);
    EXPECT_EQ(sending.parts.clock.waiting(), 0U);
    EXPECT_EQ(sending.parts.server->sent.at(7), "From: =?UTF-8?B?SmFuYQ==?= <jana@b.cz>\r\n"
                                                "To: <petr@c.cz>\r\n"
                                                "Subject: =?UTF-8?B?VsSbYw==?=\r\n"
                                                "Date: Fri, 15 Jan 2027 09:00:00 +0100\r\n"
                                                "MIME-Version: 1.0\r\n"
                                                "Content-Type: text/plain; charset=UTF-8\r\n"
                                                "Content-Transfer-Encoding: base64\r\n"
                                                "\r\n"
                                                "VGV4dC4=\r\n");
}

TEST(MacSMTPClient, WithoutATimeZoneTheDateIsInUtc) {
    MailParts parts;
    MacSMTPClient client(parts.services, "h", "u", "p", "jana@b.cz", "");
    parts.server->deliver("220\n250\n334\n334\n235\n250\n250\n354\n250\n221\n");
    EXPECT_EQ(told(parts.end(client.send("petr@c.cz", "", ""))), "ok");
    EXPECT_TRUE(parts.server->sent.at(7).contains("Date: Fri, 15 Jan 2027 08:00:00 +0000\r\n"));
}

TEST(MacSMTPClient, EveryOtherCodeAtEveryStepIsAFailure) {
    const std::vector<std::string> codes{"200", "211", "214", "220", "221", "235", "250",
                                         "251", "252", "334", "354", "421", "432", "450",
                                         "451", "452", "500", "501", "502", "530", "550"};
    ASSERT_EQ(codes.size(), 21U);
    for (std::size_t step = 0; step < dialogue.size(); ++step) {
        for (const auto& code : codes) {
            if (dialogue[step].code.empty() || dialogue[step].code == code) continue;
            Sending sending;
            EXPECT_EQ(sending.runWith(step, code + " Ne\r\n"), "SMTP server odpověděl: " + code + " Ne")
                << "step " << step + 1;
            EXPECT_EQ(sending.parts.server->sent.size(), step) << "nothing is sent after it";
            EXPECT_TRUE(sending.parts.server->isClosed);
        }
    }
}

TEST(MacSMTPClient, TwoCodesRefuseTheLoginAtEveryStep) {
    for (std::size_t step = 0; step < dialogue.size(); ++step)
        for (const auto* code : {"534", "535"}) {
            if (dialogue[step].code.empty()) continue;
            Sending sending;
            EXPECT_EQ(sending.runWith(step, code + "-a\r\n"s + code + " b\r\n"), refusedLogin) << step + 1;
        }
}

TEST(MacSMTPClient, AFailedFarewellFailsASentMail) {
    Sending refused;
    EXPECT_EQ(refused.runWith(10, "421 Bye\r\n"), "SMTP server odpověděl: 421 Bye");
    Sending ended;
    ended.begin();
    for (const auto& step : dialogue)
        if (!step.code.empty() && step.code != "221") ended.say(step.code + "\r\n");
    EXPECT_EQ(ended.outcome(), "waits");
    ended.parts.server->endStream();
    ended.parts.settle();
    EXPECT_EQ(ended.outcome(), failed + "Server spojení ukončil."s);
}

TEST(MacSMTPClient, AReplyOfManyLinesIsOne) {
    Sending sending;
    EXPECT_EQ(sending.runWith(1, "250-A\r\n250-535 x\r\nxyz-\r\n250 B\r\n"), "ok");
}

TEST(MacSMTPClient, AReplyThatIsNoneIsTold) {
    for (const auto* reply : {"xyz\r\n", "\r\n", "25\r\n", "a b c\r\n", "2x0 ok\r\n"}) {
        Sending sending;
        EXPECT_EQ(sending.runWith(0, reply), "Nesrozumitelná odpověď SMTP serveru.") << reply;
    }
}

TEST(MacSMTPClient, AReplyHas10000LinesAtMost) {
    std::string lines;
    for (int count = 0; count < 9'999; ++count) lines += "250-\r\n";
    Sending longest;
    EXPECT_EQ(longest.runWith(1, lines + "250 \r\n"), "ok");
    Sending longer;
    EXPECT_EQ(longer.runWith(1, lines + "250-\r\n250 \r\n"), "Odpověď serveru je příliš dlouhá.");
    EXPECT_TRUE(longer.parts.server->isClosed);
}

TEST(MacSMTPClient, ALineWithoutEndIsCutOff) {
    Sending sending;
    EXPECT_EQ(sending.runWith(1, std::string(65'537, 'x')), "Odpověď serveru je příliš dlouhá.");
}

TEST(MacSMTPClient, ASilentServerFailsAfter15Seconds) {
    for (std::size_t silent = 0; silent < dialogue.size(); ++silent) {
        if (dialogue[silent].code.empty()) continue;
        Sending sending;
        sending.begin();
        for (std::size_t step = 0; step < silent; ++step)
            if (!dialogue[step].code.empty()) sending.say(dialogue[step].code + "\r\n");
        sending.parts.clock.advance(15s - 1ms);
        sending.parts.settle();
        EXPECT_EQ(sending.outcome(), "waits");
        sending.parts.clock.advance(1ms);
        sending.parts.settle();
        EXPECT_EQ(sending.outcome(), failed + "Server neodpověděl."s);
        EXPECT_TRUE(sending.parts.server->isClosed);
    }
}

TEST(MacSMTPClient, TellsTheHostThatCannotBeReachedAndWrapsTheReasonOnce) {
    MailParts parts;
    ScriptedTls nobody;
    MacSMTPClient client({nobody, parts.clock, parts.workers}, "smtp.b.cz", "u", "p", "jana@b.cz", "");
    EXPECT_EQ(told(parts.end(client.send("petr@c.cz", "", ""))),
              failed + "K serveru smtp.b.cz se nepodařilo připojit: spojení odmítnuto"s);
}

TEST(MacSMTPClient, AFailureAfterTheConnectionDoesNotNameTheHost) {
    Sending sending;
    sending.begin();
    sending.parts.server->endStream();
    sending.parts.settle();
    EXPECT_EQ(sending.outcome(), failed + "Server spojení ukončil."s);
}

TEST(MacSMTPClient, ChecksBothAddressesBeforeItConnects) {
    for (const auto& bad : {"petr"s, "petr@c.cz\r\nBcc: x@y.cz"s, "petr@c.cz>\r\nRCPT TO:<x@y.cz"s, ""s}) {
        Sending sending;
        sending.begin(bad);
        EXPECT_EQ(sending.outcome(), "E-mailová adresa není platná.");
        EXPECT_TRUE(sending.parts.tls.asked.empty());
        MacSMTPClient own(sending.parts.services, "h", "u", "p", bad, "Jana");
        EXPECT_EQ(told(sending.parts.end(own.send("petr@c.cz", "", ""))), "E-mailová adresa není platná.");
        EXPECT_TRUE(sending.parts.tls.asked.empty());
    }
}

TEST(MacSMTPClient, RefusesWhatWouldBreakALineBeforeItConnects) {
    MailParts parts;
    MacSMTPClient badHost(parts.services, "h\r", "u", "p", "jana@b.cz", "");
    MacSMTPClient badName(parts.services, "h", "u\n", "p", "jana@b.cz", "");
    MacSMTPClient badPassword(parts.services, "h", "u", "p\0"s, "jana@b.cz", "");
    EXPECT_EQ(told(parts.end(badHost.send("petr@c.cz", "", ""))), failed + "Adresa serveru není platná."s);
    EXPECT_EQ(told(parts.end(badName.send("petr@c.cz", "", ""))), "E-mailová adresa není platná.");
    EXPECT_EQ(told(parts.end(badPassword.send("petr@c.cz", "", ""))), refusedLogin);
    EXPECT_TRUE(parts.tls.asked.empty());
}

TEST(MacSMTPClient, AServerThatRepeatsThePasswordIsToldByItsCode) {
    for (const auto& words : {inBase64("tajné\"he\\slo"), "tajné\"he\\slo"s}) {
        Sending sending;
        EXPECT_EQ(sending.runWith(4, "501 What is " + words + "?\r\n"), "SMTP server odpověděl: 501");
    }
}

TEST(MacSMTPClient, AStopEndsWhatWaits) {
    Sending sending;
    sending.begin();
    sending.stop.request_stop();
    sending.parts.settle();
    EXPECT_EQ(sending.outcome(), failed + "Spojení bylo zrušeno."s);
}

} // namespace
} // namespace morvex
