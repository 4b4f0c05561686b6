#include "shared/wire/Json.h"
#include "tests/servers/MailHousehold.h"
#include "tests/servers/MountedProgram.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace morvex {
namespace {

namespace json = boost::json;

/// Message 7 is the only unread one.
constexpr auto state =
    R"({"accounts": [{"name": "Škola", "emailAddresses": ["jana@skola.example"], "mailboxes": [
  {"name": "INBOX", "messages": [
    {"id": 6, "subject": "Oběd", "sender": "Kantýna <jidlo@skola.example>", "content": "Knedlíky.",
     "dateReceived": "úterý 4. března 2025", "readStatus": true},
    {"id": 7, "subject": "Řád", "sender": "Řehoř <rehor@skola.example>", "content": "Příliš žluťoučký\nkůň.",
     "dateReceived": "středa 5. března 2025", "readStatus": false}]}]}]})";

/// The shipped programs where there is an `osascript`, which runs their scripts against the model of a Mail.
class AppleMailTest : public testing::Test {
  protected:
    AppleMailTest() { std::ofstream(folder.path() / "state.json") << state; }

    void SetUp() override {
        auto mounted = MountedProgram::create("osascript", script());
        if (!mounted) GTEST_SKIP() << "this system lets no program be mounted (" << mounted.error() << ").";
        osascript = std::move(*mounted);
        home = std::make_unique<MailHousehold>();
        waitUntilMailIsOffered();
    }

    /// The accounts are asked for at the start, behind which the tools of mail are offered. The computer may
    /// well be connected before.
    void waitUntilMailIsOffered() const {
        constexpr int attempts = 50;
        std::string offered;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            offered = home->phone({"tools"}).output;
            if (offered.contains("mac.mail.send")) return;
        }
        FAIL() << "mail is not offered, only\n" << offered;
    }

    /// Each run has a journal of its own, for the accounts may be asked for at any time.
    [[nodiscard]] std::string script() const {
        const auto files = folder.path().string();
        return "#!/bin/sh\nMAIL_STATE=" + files + "/state.json MAIL_JOURNAL=" + files +
               "/$$.journal exec /usr/bin/node " MORVEX_SOURCE_DIR
               "/tests/app/mail/bridge/osascript \"$@\"\n";
    }

    /// The messages that all scripts together have made.
    [[nodiscard]] json::array outgoing() const {
        json::array all;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            if (entry.path().extension() != ".journal") continue;
            std::ifstream file(entry.path());
            // A script that runs just now has not written everything yet.
            const auto journal = parseJson(std::string(std::istreambuf_iterator<char>(file), {}));
            if (!journal) continue;
            for (const auto& made : journal->at("outgoing").as_array()) all.push_back(made);
        }
        return all;
    }

    enum class Made { draft, sent };

    [[nodiscard]] json::array onlyLetter(Made made) const {
        const bool isSent = made == Made::sent;
        return {json::object{{"recipients", {"petr@b.cz"}},
                             {"isPushed", true},
                             {"isSent", isSent},
                             {"subject", "Schůzka"},
                             {"content", "Přijdu \"v deset\".\n"},
                             {"visible", !isSent},
                             {"sender", "jana@skola.example"}}};
    }

    const json::object letter{{"to", "petr@b.cz"}, {"subject", "Schůzka"}, {"body", "Přijdu \"v deset\".\n"}};
    TemporaryFolder folder;
    std::unique_ptr<MountedProgram> osascript;
    std::unique_ptr<MailHousehold> home;
};

TEST_F(AppleMailTest, ItsMessagesAreFoundAndReadBeforeThoseOfADirectAccount) {
    home->type("ucty", "Apple Mail: Škola, povolený, výchozí");
    home->imap->deliver("1.a", "From: x@y.cz\nSubject: prima\n\nText.\n");
    home->add({"Práce"});
    const auto found = home->answerOf("mac.mail.search", {}).at("messages").as_array();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], (json::object{{"id", "apple:7"},
                                      {"from", "Řehoř <rehor@skola.example>"},
                                      {"subject", "Řád"},
                                      {"date", "středa 5. března 2025"},
                                      {"unread", true},
                                      {"account", "Škola"},
                                      {"preview", "Příliš žluťoučký\nkůň."}}));
    EXPECT_EQ(found[1].at("account"), "Práce");
    EXPECT_EQ(home->answerOf("mac.mail.read", {{"id", "apple:7"}}).at("body"), "Příliš žluťoučký\nkůň.");
    const auto lunch = home->answerOf("mac.mail.search", {{"query", "KANTYNA"}, {"account", "skola"}});
    ASSERT_EQ(lunch.at("count"), 1) << json::serialize(lunch);
    EXPECT_EQ(lunch.at("messages").at(0).at("id"), "apple:6");
}

TEST_F(AppleMailTest, ADraftIsMadeWithoutAQuestion) {
    const auto draft = home->answerOf("mac.mail.createDraft", letter);
    EXPECT_EQ(draft, (json::object{{"message", "Koncept je otevřený v Mailu."}, {"sent", false}}));
    EXPECT_EQ(outgoing(), onlyLetter(Made::draft));
}

TEST_F(AppleMailTest, AMailIsSentAfterAYes) {
    const auto sent = home->send(letter, [this] { home->mac->type("potvrdit"); });
    EXPECT_EQ(sent.code, 0) << sent.output;
    EXPECT_EQ(outgoing(), onlyLetter(Made::sent));
}

TEST_F(AppleMailTest, AMailStaysADraftAfterANo) {
    const auto refused = home->send(letter, [this] { home->mac->type("zamitnout"); });
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains("Neodesláno — nepotvrzeno. Nechal jsem to jako koncept."))
        << refused.output;
    EXPECT_EQ(outgoing(), onlyLetter(Made::draft));
}

} // namespace
} // namespace morvex
