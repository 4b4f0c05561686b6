#include "app/mail/bridge/MailScripts.h"
#include "tests/app/mail/MailToolsFixture.h"

namespace morvex {
namespace {

class MailToolsTest : public MailToolsFixture {
  protected:
    using Texts = std::vector<std::string>;

    static std::string mailMessage(const std::string& id, bool isRead) {
        return R"({"id":")" + id + R"(","ucet":"Domov","slozka":"INBOX","od":"Jan","predmet":"P)" + id +
               R"(","datum":"včera","precteno":)" + (isRead ? "true" : "false") + R"(,"ukazka":"Ahoj"})";
    }

    void mailSays(const std::string& output) { mail.answer = ScriptedPrograms::Answer{.output = output}; }

    /// A direct account's server with one message.
    void serveOneMessage(const std::string& subject) {
        const auto headers = "From: Eva\r\nSubject: " + subject + "\r\nDate: dnes\r\n\r\n";
        auto lines = imapUntilSelected();
        for (const auto& line : Texts{"* SEARCH 5", "A0003 OK",
                                      "* 1 FETCH (UID 5 FLAGS () BODY[HEADER.FIELDS (FROM SUBJECT DATE)] {" +
                                          std::to_string(headers.size()) + "}",
                                      headers + ")", "A0004 OK", "A0005 OK"})
            lines.push_back(line);
        parts.serve(lines);
    }

    const boost::json::object letter{{"to", "jan@example.com"}, {"subject", "Oběd"}, {"body", "Přijdeš?"}};
};

TEST_F(MailToolsTest, AreOfferedWhereSomeAccountCanBeUsed) {
    const Texts all{"mac.mail.search", "mac.mail.read", "mac.mail.send", "mac.mail.createDraft"};
    EXPECT_TRUE(offered().empty());
    haveMail({"Domov"});
    EXPECT_EQ(offered(), all);
    isAppleUsable = false;
    EXPECT_TRUE(offered().empty());
    isAppleUsable = true;
    EXPECT_TRUE(executor.run(accounts.nastav("Domov", false))->has_value());
    EXPECT_TRUE(offered().empty()) << "no account is allowed";
    const auto id = haveSmtp("Práce");
    EXPECT_EQ(offered(), all);
    switchTo(Integration::smtp, false);
    EXPECT_TRUE(offered().empty());
    switchTo(Integration::smtp, true);
    executor.run(smtp.odstranit(id));
    EXPECT_TRUE(offered().empty());
}

TEST_F(MailToolsTest, ASearchWithoutAQueryListsUnreadMailOfAllSources) {
    haveMail({"Domov"});
    const auto id = haveSmtp("Práce");
    mailSays("[" + mailMessage("1", false) + "," + mailMessage("2", true) + "]");
    serveOneMessage("Nová");
    EXPECT_EQ(
        call("mac.mail.search", {}),
        R"({"count":3,"messages":[)"
        R"({"id":"apple:1","from":"Jan","subject":"P1","date":"včera","unread":true,"account":"Domov","preview":"Ahoj"},)"
        R"({"id":"apple:2","from":"Jan","subject":"P2","date":"včera","unread":false,"account":"Domov","preview":"Ahoj"},)"
        R"({"id":"smtp:)" +
            id +
            R"(:5","from":"Eva","subject":"Nová","date":"dnes","unread":true,"account":"Práce","preview":""}]})");
    EXPECT_TRUE(ok);
    EXPECT_EQ(parameters(), R"({"hledat":"","ucet":"Domov","jenNeprectene":true,"limit":10})");
}

TEST_F(MailToolsTest, AppleAccountsAreAskedOneAfterTheOtherUpToTheLimit) {
    haveMail({"A", "B", "C"});
    mailSays("[" + mailMessage("1", false) + "," + mailMessage("2", false) + "]");
    call("mac.mail.search", {{"query", " oběd "}, {"limit", 3}});
    EXPECT_EQ(parameters(), R"({"hledat":"oběd","ucet":"B","jenNeprectene":false,"limit":1})");
    EXPECT_EQ(mail.programs.programs.size(), 1U + 2U) << "the list of accounts, and two of three";
}

TEST_F(MailToolsTest, ASearchWithAnAccountAsksThatOneAlone) {
    haveMail({"Domov"});
    haveSmtp("Práce");
    mailSays("[" + mailMessage("1", false) + "]");
    EXPECT_TRUE(call("mac.mail.search", {{"account", "domov"}}).contains("apple:1"));
    EXPECT_TRUE(parts.tls.asked.empty());
    serveOneMessage("Nová");
    EXPECT_FALSE(call("mac.mail.search", {{"account", "Práce"}}).contains("apple:"));
    EXPECT_EQ(parts.tls.asked.size(), 1U);
    EXPECT_EQ(call("mac.mail.search", {{"account", "X"}}),
              R"({"error":"Poštovní účet „X“ není v Morvex povolený."})");
    EXPECT_FALSE(ok);
}

TEST_F(MailToolsTest, AFailureCountsOnlyWhenNothingWasFound) {
    haveMail({"Domov"});
    haveSmtp("Práce");
    mail.failsWith("execution error: Error: Účet neznám. (-2700)");
    serveOneMessage("Nová");
    EXPECT_TRUE(call("mac.mail.search", {}).contains("Nová"));
    EXPECT_TRUE(ok);
    EXPECT_EQ(call("mac.mail.search", {}),
              R"({"error":"Spojení s poštovním serverem selhalo: spojení odmítnuto"})")
        << "the last one of several";
    EXPECT_FALSE(ok);
    switchTo(Integration::smtp, false);
    EXPECT_EQ(call("mac.mail.search", {}), R"({"error":"Error: Účet neznám."})");
}

TEST_F(MailToolsTest, NoAllowedAccountIsAFailure) {
    haveMail({"Domov"});
    EXPECT_TRUE(executor.run(accounts.nastav("Domov", false))->has_value());
    EXPECT_EQ(call("mac.mail.search", {}), R"({"error":"V Morvex není povolený žádný poštovní účet."})");
}

TEST_F(MailToolsTest, NothingFoundIsNoFailure) {
    haveMail({"Domov"});
    mailSays("[]");
    EXPECT_EQ(call("mac.mail.search", {}), R"({"count":0,"messages":[]})");
    EXPECT_TRUE(ok);
    EXPECT_EQ(call("mac.mail.search", {{"limit", -1}}), R"({"count":0,"messages":[]})");
}

TEST_F(MailToolsTest, ReadsByThePrefixOfTheId) {
    haveMail({"Domov", "Práce"});
    mailSays(R"("Ahoj")");
    EXPECT_EQ(call("mac.mail.read", {}), R"({"error":"Chybí číslo zprávy."})");
    for (const char* id : {"apple:7", "7"}) {
        EXPECT_EQ(call("mac.mail.read", {{"id", id}}), R"({"body":"Ahoj"})");
        EXPECT_EQ(parameters(), R"({"id":"7","ucty":["Domov","Práce"]})") << "without a prefix it is Apple's";
    }
    EXPECT_EQ(call("mac.mail.read", {{"id", "smtp:x:7"}}), R"({"error":"SMTP účet „x“ není připojený."})");
    switchTo(Integration::smtp, false);
    const auto id = haveSmtp("Práce");
    switchTo(Integration::smtp, false);
    auto lines = imapUntilSelected();
    for (const char* line : {"* 1 FETCH (UID 7 BODY[TEXT] {4}", "text)", "A0003 OK", "A0004 OK"})
        lines.emplace_back(line);
    parts.serve(lines);
    EXPECT_EQ(call("mac.mail.read", {{"id", "smtp:" + id + ":7"}}), R"({"body":"text"})")
        << "whatever the switch says";
}

TEST_F(MailToolsTest, WithoutAnAllowedAccountNoMessageOfMailIsRead) {
    EXPECT_EQ(call("mac.mail.read", {{"id", "7"}}),
              R"({"error":"V Morvex není povolený žádný poštovní účet."})");
    std::filesystem::remove(mail.path);
    executor.run(accounts.obnovit());
    EXPECT_EQ(call("mac.mail.read", {{"id", "7"}}),
              R"({"error":"Apple Mail existuje jen v systému macOS."})");
}

TEST_F(MailToolsTest, SendingAsksFirst) {
    haveSmtp("Práce");
    parts.serve(smtpThatTakesAMail());
    EXPECT_EQ(call("mac.mail.send", letter), R"({"sent":true,"message":"E-mail byl odeslán z účtu Práce."})");
    EXPECT_TRUE(ok);
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->tool, "mac.mail.send");
    EXPECT_EQ(asked->title, "Odeslat mail");
    EXPECT_EQ(asked->spoken,
              "Chystám se odeslat mail pro jan@example.com. Předmět: Oběd. Text: Přijdeš? Mám to poslat?");
    EXPECT_EQ(asked->detail, "Odesílatel: Práce\nKomu: jan@example.com\nPředmět: Oběd\n\nPřijdeš?");
}

TEST_F(MailToolsTest, SendingByMailUsesItsAccount) {
    haveMail({"Domov"});
    mailSays(R"("Odesláno.")");
    EXPECT_EQ(call("mac.mail.send", letter), R"({"sent":true,"message":"Odesláno."})");
    EXPECT_EQ(parameters(),
              R"({"ucet":"Domov","komu":"jan@example.com","predmet":"Oběd","telo":"Přijdeš?"})");
    EXPECT_TRUE(asked->detail.starts_with("Odesílatel: Domov\n"));
    mail.failsWith("not allowed");
    EXPECT_TRUE(call("mac.mail.send", letter).starts_with(R"({"sent":false,"error":"macOS nepovolil)"));
    EXPECT_FALSE(ok);
}

TEST_F(MailToolsTest, TheTargetIsLookedAtBeforeTheRecipient) {
    EXPECT_EQ(call("mac.mail.send", {}), R"({"error":"V Morvex není povolený žádný poštovní účet."})");
    haveSmtp("Práce");
    for (const auto& incomplete : {boost::json::object{}, boost::json::object{{"to", "a@example.com"}},
                                   boost::json::object{{"body", "x"}}})
        EXPECT_EQ(call("mac.mail.send", incomplete), R"({"error":"Chybí příjemce nebo text."})");
    EXPECT_FALSE(asked);
    parts.serve(smtpThatTakesAMail());
    call("mac.mail.send", {{"to", "a@example.com"}, {"body", "x"}});
    EXPECT_TRUE(ok) << "a subject may be missing";
}

TEST_F(MailToolsTest, TheFormOfTheRecipientIsJudgedAfterTheYes) {
    haveSmtp("Práce");
    auto wrong = letter;
    wrong["to"] = "Jan";
    EXPECT_EQ(call("mac.mail.send", wrong), R"({"sent":false,"error":"E-mailová adresa není platná."})");
    EXPECT_TRUE(asked);
    EXPECT_TRUE(parts.tls.asked.empty());
}

TEST_F(MailToolsTest, ARefusedMailOfADirectAccountLeavesNothing) {
    haveSmtp("Práce");
    approves = false;
    EXPECT_EQ(call("mac.mail.send", letter), R"({"sent":false,"error":"Neodesláno — nepotvrzeno."})");
    EXPECT_FALSE(ok);
    EXPECT_TRUE(parts.tls.asked.empty());
    EXPECT_TRUE(mail.programs.programs.empty());
}

TEST_F(MailToolsTest, ARefusedMailOfAppleMailBecomesADraft) {
    haveMail({"Domov"});
    approves = false;
    mailSays(R"("Koncept je otevřený v Mailu.")");
    EXPECT_EQ(call("mac.mail.send", letter),
              R"({"sent":false,"error":"Neodesláno — nepotvrzeno. Nechal jsem to jako koncept."})");
    EXPECT_TRUE(mail.programs.programs.back().args.back().contains(mailScripts::draft));
    mail.failsWith("nothing");
    EXPECT_EQ(call("mac.mail.send", letter), R"({"sent":false,"error":"Neodesláno — nepotvrzeno."})");
}

TEST_F(MailToolsTest, AnAccountThatGoesWhileTheQuestionWaitsIsAFailureOfItsOwn) {
    const auto id = haveSmtp("Práce");
    whileAsking = [&] { return smtp.odstranit(id); };
    EXPECT_EQ(call("mac.mail.send", letter), R"({"sent":false,"error":"SMTP účet „Práce“ není připojený."})");
}

TEST_F(MailToolsTest, ADraftIsMadeByMailAlone) {
    EXPECT_EQ(call("mac.mail.createDraft", {}), R"({"error":"Chybí příjemce."})") << "before the target";
    haveMail({"Domov"});
    mailSays(R"("Koncept je otevřený v Mailu.")");
    EXPECT_EQ(call("mac.mail.createDraft", {{"to", "jan@example.com"}}),
              R"({"message":"Koncept je otevřený v Mailu.","sent":false})");
    EXPECT_TRUE(ok);
    EXPECT_FALSE(asked);
    haveSmtp("Práce");
    EXPECT_EQ(call("mac.mail.createDraft", {{"to", "jan@example.com"}, {"account", "Práce"}}),
              R"({"error":"Přímé SMTP neumí ukládat koncepty. Pro koncept použij účet v Apple Mailu."})");
}

} // namespace
} // namespace morvex
