#include "tests/app/mail/MailParts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace morvex {
namespace {

using Texts = std::vector<std::string>;

/// Accounts that talk to servers.
class MacSMTPDialogueTest : public testing::Test {
  protected:
    MacSMTPDialogueTest() { id = add(mailAccount()); }

    std::string add(const MacSMTPAccount& account, const std::string& password = "heslo") {
        return executor.run(service.ulozit(account, password))->value();
    }

    static Texts with(Texts lines, const Texts& more) {
        lines.insert(lines.end(), more.begin(), more.end());
        return lines;
    }

    /// The reply to a FETCH of headers.
    static Texts message(int uid, const std::string& from, const std::string& subject, bool isRead = false) {
        const auto headers = "From: " + from + "\r\nSubject: " + subject + "\r\nDate: today\r\n\r\n";
        return {"* 1 FETCH (UID " + std::to_string(uid) + " FLAGS (" + (isRead ? "\\Seen" : "") +
                    ") BODY[HEADER.FIELDS (FROM SUBJECT DATE)] {" + std::to_string(headers.size()) + "}",
                headers + ")"};
    }

    /// The ids and subjects of what is listed, or the words of the failure.
    std::string listed(std::optional<std::string> account, std::optional<std::string> query, bool onlyUnread,
                       std::int64_t limit) {
        const auto found =
            *executor.run(service.zpravy(std::move(account), std::move(query), onlyUnread, limit));
        if (!found) return found.error().popis().czech();
        std::string all;
        for (const auto& one : *found) all += one.id.substr(one.id.rfind(':') + 1) + " " + one.subject + "; ";
        return all;
    }

    std::string read(const std::string& message) {
        const auto text = *executor.run(service.obsah(message));
        return text ? *text : text.error().popis().czech();
    }

    std::string sent(const std::string& to = "jan@example.com") {
        const auto told = *executor.run(service.odeslat({}, to, "Ahoj", "text"));
        return told ? told->czech() : told.error().popis().czech();
    }

    Task<void> noteListed() {
        const auto found = co_await service.zpravy({}, {}, false, 10);
        ending = found ? "found" : found.error().popis().czech();
    }

    /// The commands that a server got, without their line ends.
    static Texts commands(const ScriptedTlsConnection& connection) {
        auto all = connection.sent;
        for (auto& one : all) one = one.substr(0, one.find('\r'));
        return all;
    }

    ManualExecutor executor;
    MailParts parts{executor};
    MacSMTPService service{parts.services()};
    std::string id;
    std::string ending;
};

TEST_F(MacSMTPDialogueTest, ListsTheNewestFirstFromAConnectionOfItsOwn) {
    const auto server = parts.serve(with(
        imapUntilSelected(), with(with(Texts{"* SEARCH 4 7", "A0003 OK"},
                                       with(message(4, "Jan", "Starší", true), message(7, "Eva", "Nová"))),
                                  {"A0004 OK", "A0005 OK"})));
    const auto found = *executor.run(service.zpravy({}, {}, false, 10));
    ASSERT_TRUE(found) << found.error().popis().czech();
    ASSERT_EQ(found->size(), 2U);
    EXPECT_EQ((*found)[0], (MacSMTPMessage{"smtp:" + id + ":7", id, "Práce", "Eva", "Nová", "today", false}));
    EXPECT_TRUE((*found)[1].read);
    EXPECT_EQ(parts.tls.asked, Texts{"imap.example.com:993"});
    EXPECT_EQ(
        commands(*server),
        (Texts{R"(A0001 LOGIN "eva@example.com" "heslo")", R"(A0002 SELECT "INBOX")", "A0003 UID SEARCH ALL",
               "A0004 UID FETCH 7,4 (UID FLAGS BODY.PEEK[HEADER.FIELDS (FROM SUBJECT DATE)])",
               "A0005 LOGOUT"}));
}

TEST_F(MacSMTPDialogueTest, UnreadOnesAreSearchedAndNoneAreNotFetched) {
    const auto server = parts.serve(with(imapUntilSelected(), {"* SEARCH", "A0003 OK", "A0004 OK"}));
    EXPECT_EQ(listed({}, {}, true, 10), "");
    EXPECT_EQ(commands(*server)[2], "A0003 UID SEARCH UNSEEN");
    EXPECT_EQ(commands(*server)[3], "A0004 LOGOUT");
}

TEST_F(MacSMTPDialogueTest, FiveTimesTheLimitIsFetchedAndFiltered) {
    std::string uids = "* SEARCH";
    for (int uid = 1; uid <= 30; ++uid) uids += " " + std::to_string(uid);
    Texts messages;
    for (int uid = 21; uid <= 30; ++uid)
        messages =
            with(messages, message(uid, uid % 2 == 0 ? "Účtárna" : "Jan", "č. " + std::to_string(uid)));
    const auto server = parts.serve(
        with(with(with(imapUntilSelected(), {uids, "A0003 OK"}), messages), {"A0004 OK", "A0005 OK"}));
    EXPECT_EQ(listed("prace", "UCTARNA", false, 2), "30 č. 30; 28 č. 28; ");
    EXPECT_TRUE(commands(*server)[3].starts_with("A0004 UID FETCH 30,29,28,27,26,25,24,23,22,21 ("));
}

TEST_F(MacSMTPDialogueTest, ALimitIsFrom0To200) {
    parts.serve(with(imapUntilSelected(), {"* SEARCH 1", "A0003 OK", "A0004 OK"}));
    EXPECT_EQ(listed({}, {}, false, -5), "");
    std::string uids = "* SEARCH";
    for (int uid = 1; uid <= 2'000; ++uid) uids += " " + std::to_string(uid);
    const auto server = parts.serve(with(imapUntilSelected(), {uids, "A0003 OK", "A0004 OK", "A0005 OK"}));
    listed({}, {}, false, 1'000'000);
    EXPECT_EQ(std::ranges::count(commands(*server)[3], ','), 999);
}

TEST_F(MacSMTPDialogueTest, WithoutANameAllCompleteAccountsAreAsked) {
    auto incomplete = mailAccount("B");
    incomplete.smtpHost = "";
    add(incomplete);
    auto other = mailAccount("C");
    other.imapHost = "other.example.com";
    add(other);
    for (int account = 0; account < 2; ++account)
        parts.serve(with(imapUntilSelected(), {"* SEARCH", "A0003 OK", "A0004 OK"}));
    EXPECT_EQ(listed({}, {}, true, 10), "");
    EXPECT_EQ(parts.tls.asked, (Texts{"imap.example.com:993", "other.example.com:993"}));
}

TEST_F(MacSMTPDialogueTest, AMissingPasswordIsToldWithoutAConnection) {
    add(service.accounts().front(), "");
    executor.run(parts.keychain.remove("smtp.password." + id));
    const std::string missing = "Chybí heslo k poštovnímu účtu.";
    EXPECT_EQ(listed({}, {}, true, 10), missing);
    EXPECT_EQ(read("smtp:" + id + ":1"), missing);
    EXPECT_EQ(sent(), missing);
    EXPECT_TRUE(parts.tls.asked.empty());
}

TEST_F(MacSMTPDialogueTest, LogsOutAlsoAfterAFailure) {
    const auto server = parts.serve({"* OK", "A0001 OK", "A0002 NO no such mailbox", "A0003 OK"});
    EXPECT_EQ(listed({}, {}, true, 10), "Server odpověděl: NO no such mailbox");
    EXPECT_EQ(commands(*server).back(), "A0003 LOGOUT");
}

TEST_F(MacSMTPDialogueTest, ReadsAText) {
    const auto server = parts.serve(
        with(imapUntilSelected(), {"* 1 FETCH (UID 7 BODY[TEXT] {5}", "Ahoj.)", "A0003 OK", "A0004 OK"}));
    EXPECT_EQ(read("smtp:" + id + ":7"), "Ahoj.");
    EXPECT_EQ(commands(*server)[2], "A0003 UID FETCH 7 (UID BODY.PEEK[TEXT])");
}

TEST_F(MacSMTPDialogueTest, AMessageThatIsNotThereIsToldSo) {
    const std::string none = "Zprávu s tímhle číslem jsem nenašel.";
    parts.serve(with(imapUntilSelected(), {"A0003 OK", "A0004 OK"}));
    EXPECT_EQ(read("smtp:" + id + ":7"), none);
    EXPECT_EQ(read("smtp:" + id + ":0"), none);
    EXPECT_EQ(read("smtp:" + id + ":7\r\nA0009 DELETE INBOX"), none);
    EXPECT_EQ(read("smtp:nobody:7"), "SMTP účet „nobody“ není připojený.");
    EXPECT_EQ(parts.tls.asked.size(), 1U);
}

TEST_F(MacSMTPDialogueTest, AnEmptyTextIsAnEmptyBody) {
    parts.serve(with(imapUntilSelected(), {"* 1 FETCH (UID 7 BODY[TEXT] {0}", ")", "A0003 OK", "A0004 OK"}));
    EXPECT_EQ(read("smtp:" + id + ":7"), "");
}

TEST_F(MacSMTPDialogueTest, SendsInTheNameOfTheAccount) {
    struct Row {
        const char* senderName;
        const char* label;
        const char* name; ///< in base64
        const char* told;
    };

    for (const auto& row : {
             Row{"Eva", "Práce", "RXZh", "E-mail byl odeslán z účtu Práce."},
             Row{"", "Work", "V29yaw==", "E-mail byl odeslán z účtu Work."},
             Row{"", "", "ZXZhQGV4YW1wbGUuY29t", "E-mail byl odeslán z účtu eva@example.com."},
         }) {
        auto account = service.accounts().front();
        account.senderName = row.senderName;
        account.label = row.label;
        add(account, "");
        const auto server = parts.serve(smtpThatTakesAMail());
        EXPECT_EQ(sent(), row.told);
        EXPECT_EQ(parts.tls.asked.back(), "smtp.example.com:465");
        const auto said = commands(*server);
        EXPECT_EQ(said.at(2), "ZXZhQGV4YW1wbGUuY29t") << "the address is the user name";
        EXPECT_EQ(said.at(4), "MAIL FROM:<eva@example.com>");
        EXPECT_EQ(said.at(7), "From: =?UTF-8?B?" + std::string(row.name) + "?= <eva@example.com>");
    }
}

TEST_F(MacSMTPDialogueTest, ARecipientIsJudgedBeforeAConnection) {
    EXPECT_EQ(sent("jan@example.com\nBcc: all@example.com"), "E-mailová adresa není platná.");
    EXPECT_TRUE(parts.tls.asked.empty());
}

TEST_F(MacSMTPDialogueTest, ATestTellsHowTheLoginWent) {
    using Case = MacSMTPService::AccountState::Case;
    EXPECT_EQ(service.state(id).kind, Case::idle);
    const auto server = parts.serve({"* OK", "A0001 OK", "A0002 OK"});
    executor.run(service.otestovat(id));
    EXPECT_EQ(service.state(id).kind, Case::ready);
    EXPECT_EQ(commands(*server).back(), "A0002 LOGOUT");
    parts.serve({"* OK", "A0001 NO", "A0002 OK"});
    executor.run(service.otestovat(id));
    EXPECT_EQ(service.state(id).kind, Case::failed);
    EXPECT_EQ(service.state(id).message.czech(),
              "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.");
    add(service.accounts().front(), "");
    EXPECT_EQ(service.state(id).kind, Case::idle) << "it may be another one now";
}

TEST_F(MacSMTPDialogueTest, AChangeDuringATestWins) {
    using Case = MacSMTPService::AccountState::Case;
    const auto server = parts.tls.layOut();
    executor.start(service.otestovat(id));
    executor.runUntilIdle();
    EXPECT_EQ(service.state(id).kind, Case::testing);
    add(service.accounts().front(), "nové");
    server->deliver("* OK\r\nA0001 OK\r\nA0002 OK\r\n");
    executor.runUntilIdle();
    EXPECT_EQ(service.state(id).kind, Case::idle);
}

TEST_F(MacSMTPDialogueTest, AnAccountThatWasRemovedSendsNothing) {
    executor.run(service.odstranit(id));
    const auto told = *executor.run(service.odeslat(id, "jan@example.com", "", "text"));
    EXPECT_EQ(told.error().popis().czech(), "SMTP účet „" + id + "“ není připojený.");
}

TEST_F(MacSMTPDialogueTest, AServerThatGoesOnForEverIsLeft) {
    const auto server = parts.serve(imapUntilSelected());
    executor.start(noteListed());
    executor.runUntilIdle();
    for (int line = 0; line < 9; ++line) {
        EXPECT_EQ(ending, "") << line;
        server->deliver("* 1 EXISTS\r\n");
        executor.runUntilIdle();
        parts.clock.advance(std::chrono::seconds(14));
        executor.runUntilIdle();
    }
    EXPECT_EQ(ending, "Spojení s poštovním serverem selhalo: Spojení bylo zrušeno.");
    EXPECT_TRUE(server->isClosed);
}

} // namespace
} // namespace morvex
