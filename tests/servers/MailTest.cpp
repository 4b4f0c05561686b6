#include "shared/base/SystemTrouble.h"
#include "shared/wire/Json.h"
#include "tests/servers/MailHousehold.h"
#include "tests/servers/TestNetwork.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <chrono>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

namespace json = boost::json;

constexpr auto refusedLogin = "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.";
const std::string troubleOfServer = "Potíž: Spojení s poštovním serverem selhalo: ";

class MailTest : public testing::Test, protected MailHousehold {
  protected:
    /// The result of sending this letter from an account after a yes.
    Ended sendFrom(const std::string& account) {
        auto mail = letter;
        if (!account.empty()) mail["account"] = account;
        return send(mail, [this] { mac->type("potvrdit"); });
    }

    std::string onlyIdOf(const std::string& account) {
        const auto found = answerOf("mac.mail.search", {{"account", account}});
        EXPECT_EQ(found.at("count"), 1) << json::serialize(found);
        return std::string(found.at("messages").as_array().at(0).at("id").as_string());
    }

    const json::object letter{{"to", "petr@b.cz"}, {"subject", "Schůzka"}, {"body", "Přijdu v deset.\n"}};
};

TEST_F(MailTest, UnreadMailIsFoundAndReadAndStaysUnread) {
    imap->deliver("1.a", "From: x@y.cz\nSubject: stara\n\nPrectena.\n", true);
    imap->deliver("2.b",
                  "From: =?UTF-8?Q?Ji=C5=99=C3=AD_Nov=C3=BD?= <j@b.cz>\nSubject: =?UTF-8?B?xaBrb2xh?=\n"
                  "Date: Sat, 14 Mar 2026 10:00:00 +0100\n\nZ=C3=ADtra p=C5=99ijdu.\n");
    add({"Práce"});
    for (int time = 0; time < 2; ++time) {
        const auto found = answerOf("mac.mail.search", {});
        ASSERT_EQ(found.at("count"), 1) << json::serialize(found);
        const auto& message = found.at("messages").as_array()[0].as_object();
        EXPECT_EQ(message.at("from"), "Jiří Nový <j@b.cz>");
        EXPECT_EQ(message.at("subject"), "Škola");
        EXPECT_EQ(message.at("date"), "Sat, 14 Mar 2026 10:00:00 +0100");
        EXPECT_EQ(message.at("unread"), true);
        EXPECT_EQ(message.at("account"), "Práce");
        EXPECT_EQ(answerOf("mac.mail.read", {{"id", message.at("id")}}).at("body"), "Zítra přijdu.\n");
    }
    EXPECT_EQ(answerOf("mac.mail.search", {{"query", "STARA"}, {"account", "prace"}}).at("count"), 1)
        << "also what is read, in the account that is named without diacritics";
}

TEST_F(MailTest, ATextIsReadWholeAndItsPartsAreNotTakenApart) {
    const std::string longText = "Příliš žluťoučký kůň úpěl ďábelské ódy.\n";
    std::string many;
    for (int line = 0; line < 2000; ++line) many += longText;
    const std::vector<std::pair<std::string, std::string>> texts{
        {many, many},
        {"UMWZw61sacWhIMW+bHXFpW91xI1rw70ga8\nWvxYguCg==\n", "Příliš žluťoučký kůň.\n"},
        {"--hranice\nContent-Type: text/plain; charset=utf-8\n\nP=C5=99=C3=ADli=C5=A1 =\nkr=C3=A1tk=C3=A9\n"
         "--hranice\nContent-Type: text/html; charset=utf-8\n\n<p>úpěl</p>\n--hranice--\n",
         "--hranice\nContent-Type: text/plain; charset=utf-8\n\nPříliš krátké\n"
         "--hranice\nContent-Type: text/html; charset=utf-8\n\n<p>úpěl</p>\n--hranice--\n"},
        {"", ""}};
    for (std::size_t number = 0; number < texts.size(); ++number)
        imap->deliver(std::to_string(number) + ".m",
                      "From: x@y.cz\nContent-Type: multipart/alternative; boundary=hranice\nSubject: text " +
                          std::to_string(number) + "\n\n" + texts[number].first);
    add({"Práce"});
    const auto found = answerOf("mac.mail.search", {}).at("messages").as_array();
    ASSERT_EQ(found.size(), texts.size());
    for (std::size_t number = 0; number < texts.size(); ++number) {
        const auto& message = found.at(texts.size() - 1 - number);
        EXPECT_EQ(message.at("subject").as_string(), "text " + std::to_string(number));
        EXPECT_EQ(answerOf("mac.mail.read", {{"id", message.at("id")}}).at("body").as_string(),
                  texts[number].second);
    }
}

TEST_F(MailTest, AMailArrivesByteForByteAfterAYesOnTheComputer) {
    add({"Práce"});
    const auto before = mac->output().size();
    const auto sent = sendFrom("");
    EXPECT_EQ(sent.code, 0) << sent.output;
    EXPECT_TRUE(sent.output.contains("E-mail byl odeslán z účtu Práce.")) << sent.output;
    const auto asked = mac->output().substr(before);
    for (const char* line : {"Odesílatel: Práce", "Komu: petr@b.cz", "Předmět: Schůzka", "Přijdu v deset."})
        EXPECT_TRUE(asked.contains(line)) << asked;

    const auto taken = parseJson(smtp->nextMessage()).value().as_object();
    EXPECT_EQ(taken.at("sender"), RealSmtpServer::username);
    EXPECT_EQ(taken.at("recipients"), json::array{"petr@b.cz"});
    const std::regex date("\r\nDate: [A-Z][a-z]{2}, \\d{1,2} [A-Z][a-z]{2} \\d{4} \\d\\d:\\d\\d:\\d\\d "
                          "[+-]\\d{4}\r\n");
    EXPECT_EQ(std::regex_replace(std::string(taken.at("content").as_string()), date, "\r\nDate: then\r\n"),
              "From: =?UTF-8?B?SmFuYSBOb3bDoQ==?= <jana@b.cz>\r\nTo: <petr@b.cz>\r\n"
              "Subject: =?UTF-8?B?U2Noxa96a2E=?=\r\nDate: then\r\nMIME-Version: 1.0\r\n"
              "Content-Type: text/plain; charset=UTF-8\r\nContent-Transfer-Encoding: base64\r\n\r\n"
              "UMWZaWpkdSB2IGRlc2V0Lgo=\r\n");
    EXPECT_TRUE(smtp->end().empty());
}

TEST_F(MailTest, NothingIsSentAfterANo) {
    add({"Práce"});
    const auto refused = send(letter, [this] { mac->type("zamitnout"); });
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains("Neodesláno — nepotvrzeno.")) << refused.output;
    EXPECT_TRUE(smtp->end().empty());
}

TEST_F(MailTest, ThePhoneShowsTheQuestionThatTheComputerDecides) {
    add({"Práce"});
    const auto refused = send(letter, [this] { mac->type("zamitnout"); }, {"--approve", "yes"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains("Mac žádá o potvrzení: Odeslat mail")) << refused.output;
    EXPECT_TRUE(refused.output.contains("Rozhodni na Macu: ")) << refused.output;
    EXPECT_TRUE(smtp->end().empty());
}

TEST_F(MailTest, WhatTheServerRefusesIsToldInItsWords) {
    add({"Práce"});
    const auto refused =
        send({{"to", "nobody@c.cz"}, {"subject", "x"}, {"body", "x"}}, [this] { mac->type("potvrdit"); });
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains("SMTP server odpověděl: 550 5.1.1 No such user")) << refused.output;
    EXPECT_TRUE(smtp->end().empty());
}

TEST_F(MailTest, AnAccountThatIsRemovedWhileTheQuestionWaitsSendsNothing) {
    add({"Práce"});
    const auto ended = send(letter, [this] {
        type("ucet-odebrat Práce", "Odebráno: Práce");
        mac->type("potvrdit");
    });
    EXPECT_EQ(ended.code, 1);
    EXPECT_TRUE(ended.output.contains("SMTP účet „Práce“ není připojený.")) << ended.output;
    EXPECT_TRUE(smtp->end().empty());
}

TEST_F(MailTest, ThePasswordIsInTheVaultAloneAndGoesWithTheAccount) {
    const std::string password = RealImapServer::password;
    add({"Práce"});
    type("ucty", "Účet: Práce, jana@b.cz, imap.example, smtp.example, výchozí, ověřený");
    EXPECT_EQ(sendFrom("").code, 0);
    EXPECT_EQ(foldersWith(password), std::vector<std::string>{"zz.bramwick.Morvex.mac"});
    EXPECT_FALSE(foldersWith("imap.example").empty()) << "the settings are among the files";
    EXPECT_FALSE(mac->output().contains(password));
    type("ucet-odebrat prace", "Odebráno: Práce");
    EXPECT_TRUE(foldersWith(password).empty());
}

TEST_F(MailTest, OneOfTwoAccountsIsTheDefaultAndTheOtherIsNamed) {
    add({"Práce", "Jana v práci"});
    add({"Škola", "Jana ve škole"});
    type("ucet-vychozi skola", "Výchozí účet pro odesílání: Škola");
    type("ucty", "Účet: Škola, jana@b.cz, imap.example, smtp.example, výchozí, ověřený");
    for (const auto& [named, sender] : {std::pair("", "Jana ve škole <jana@b.cz>"),
                                        {"PRACE", "Jana v práci <jana@b.cz>"},
                                        {"skola", "Jana ve škole <jana@b.cz>"}}) {
        EXPECT_EQ(sendFrom(named).code, 0);
        EXPECT_EQ(parseJson(smtp->nextMessage()).value().at("from"), sender) << named;
    }
    const auto unknown = call("mac.mail.search", {{"account", "Doma"}});
    EXPECT_EQ(unknown.code, 1);
    EXPECT_TRUE(unknown.output.contains("Poštovní účet „Doma“ není v Morvex povolený.")) << unknown.output;
}

TEST_F(MailTest, AnAccountThatIsRemovedIsOutOfThePhonesReach) {
    imap->deliver("1.a", "From: x@y.cz\nSubject: a\n\nText.\n");
    add({"Práce"});
    add({"Škola"});
    const auto id = onlyIdOf("prace");
    EXPECT_EQ(answerOf("mac.mail.search", {}).at("count"), 2) << "each account is a source of its own";
    type("ucet-odebrat PRÁCE", "Odebráno: Práce");
    const auto refused = call("mac.mail.read", {{"id", id}});
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains("není připojený.")) << refused.output;
    EXPECT_EQ(answerOf("mac.mail.search", {}).at("count"), 1);
    type("ucet-odebrat Škola", "Odebráno: Škola");
    const auto without = call("mac.mail.search", {});
    EXPECT_EQ(without.code, 1);
    EXPECT_TRUE(without.output.contains("Nástroj mac.mail.search tenhle Mac nemá.")) << without.output;
}

TEST_F(MailTest, ThereIsNoAppleMailHere) {
    type("ucty", "Potíž: Apple Mail existuje jen v systému macOS.");
    add({"Práce"});
    const auto draft = call("mac.mail.createDraft", letter);
    EXPECT_EQ(draft.code, 1);
    EXPECT_TRUE(draft.output.contains("Přímé SMTP neumí ukládat koncepty.")) << draft.output;
}

TEST_F(MailTest, WhatIsWrongWithAnAccountIsTold) {
    const std::string refused = "Potíž: " + std::string(refusedLogin);
    add({.name = "Heslo", .password = "jiné"}, refused);
    EXPECT_EQ(type("ucet-overit heslo", refusedLogin), refused);
    add({.name = "Jméno", .imapHost = "servers.example"},
        troubleOfServer + popis(SystemTrouble::certificateOtherName).czech());
    add({.name = "Nikde", .imapHost = "neexistuje.example"},
        troubleOfServer + popis(SystemTrouble::unknownName).czech());
    add({"Dobrý"});
    EXPECT_EQ(type("ucet-overit dobry", "Ověřeno"), "Ověřeno");
    imap.reset();
    EXPECT_EQ(type("ucet-overit dobry", troubleOfServer),
              troubleOfServer + popis(SystemTrouble::refused).czech());
}

TEST_F(MailTest, ACertificateThatProvesNothingIsToldByItsClass) {
    add({"Práce"});
    const auto& authority = testNetwork().authority;
    const std::string names = "DNS:imap.example,DNS:smtp.example";
    const std::vector<std::pair<TestAuthority::Identity, SystemTrouble>> identities{
        {authority.issue(names, {-48h, -1h}), SystemTrouble::certificateExpired},
        {authority.issue("DNS:apps.example"), SystemTrouble::certificateOtherName},
        {TestAuthority().issue(names), SystemTrouble::certificateUntrusted},
        {TestAuthority::issueToItself(names), SystemTrouble::certificateUntrusted}};
    for (const auto& [wrong, trouble] : identities) {
        imap.reset();
        imap = std::make_unique<RealImapServer>(wrong, 993);
        smtp.reset();
        smtp = std::make_unique<RealSmtpServer>(wrong, 465);
        const auto why = popis(trouble).czech();
        EXPECT_EQ(type("ucet-overit prace", troubleOfServer), troubleOfServer + why);
        const auto refused = sendFrom("");
        EXPECT_EQ(refused.code, 1);
        EXPECT_TRUE(refused.output.contains("K serveru smtp.example se nepodařilo připojit: " + why))
            << refused.output;
        EXPECT_TRUE(smtp->end().empty());
    }
}

/// The console on a terminal, which shows what is typed.
class MailTerminalTest : public testing::Test, protected MailHousehold {
  protected:
    MailTerminalTest() : MailHousehold(Program::Input::terminal) {}
};

TEST_F(MailTerminalTest, EverythingButThePasswordIsSeenWhileItIsTyped) {
    add({"Práce"});
    const auto seen = mac->echo();
    EXPECT_TRUE(seen.contains("smtp.example")) << seen;
    EXPECT_FALSE(seen.contains("tajn")) << seen;
    type("ucty", "Účet: Práce");
    EXPECT_TRUE(mac->echo().contains("ucty"));
}

} // namespace
} // namespace morvex
