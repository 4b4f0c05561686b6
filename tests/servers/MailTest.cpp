#include "shared/base/SystemTrouble.h"
#include "shared/wire/Json.h"
#include "tests/servers/PrivateHousehold.h"
#include "tests/servers/TestNetwork.h"
#include "tests/support/RealMailServers.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace morvex {
namespace {

namespace json = boost::json;

constexpr auto refusedLogin = "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.";

/// The console, a relay and a phone that is paired, with real mail servers at the ports of mail.
class MailTest : public testing::Test, protected PrivateHousehold {
  protected:
    MailTest() { pair(*mac); }

    void type(const std::string& command, const std::string& answer) {
        mac->type(command);
        mac->waitForNextLine(answer);
    }

    /// Adds an account as a person does, and waits for what came of the login.
    void add(const std::string& name, const std::string& outcome,
             const std::string& password = RealImapServer::password,
             const std::string& imapHost = "imap.example") {
        mac->type("ucet-pridat");
        for (const auto& answer : {name, std::string(RealImapServer::username), std::string("Jana Nová"),
                                   imapHost, std::string("smtp.example"), password})
            mac->type(answer);
        mac->waitForNextLine("Přidáno: " + name);
        mac->waitForNextLine(outcome);
    }

    Ended call(const std::string& tool, const json::object& arguments) {
        return phone({"--json", "call", tool, json::serialize(arguments)});
    }

    /// What a call that works answers.
    json::object answerOf(const std::string& tool, const json::object& arguments) {
        const auto ended = call(tool, arguments);
        EXPECT_EQ(ended.code, 0) << ended.output;
        const auto parsed = parseJson(ended.output);
        return parsed && parsed->is_object() ? parsed->as_object() : json::object();
    }

    /// Sends a mail while the computer asks, where a person answers with this.
    Ended send(const json::object& mail, const std::function<void()>& answer) {
        auto sent = std::async(std::launch::async, [&] { return call("mac.mail.send", mail); });
        mac->waitForNextLine("Čeká na potvrzení: Odeslat mail");
        answer();
        return sent.get();
    }

    /// The files of the computer that contain this text.
    std::vector<std::string> filesWith(const std::string& text) {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(temporary.path() / "mac")) {
            if (!entry.is_regular_file()) continue;
            std::ifstream file(entry.path());
            const std::string content(std::istreambuf_iterator<char>(file), {});
            if (content.contains(text)) found.push_back(entry.path().parent_path().filename().string());
        }
        return found;
    }

    TestAuthority::Identity identity = testNetwork().authority.issue("DNS:imap.example,DNS:smtp.example");
    RealImapServer imap{identity, 993};
    RealSmtpServer smtp{identity, 465};
    std::unique_ptr<Program> mac = startMac();
    const json::object letter{{"to", "petr@b.cz"}, {"subject", "Schůzka"}, {"body", "Přijdu v deset.\n"}};
};

TEST_F(MailTest, UnreadMailIsFoundAndReadAndStaysUnread) {
    imap.deliver("1.a", "From: x@y.cz\nSubject: stara\n\nPrectena.\n", true);
    imap.deliver("2.b", "From: =?UTF-8?Q?Ji=C5=99=C3=AD_Nov=C3=BD?= <j@b.cz>\nSubject: =?UTF-8?B?xaBrb2xh?=\n"
                        "Date: Sat, 14 Mar 2026 10:00:00 +0100\n\nZ=C3=ADtra p=C5=99ijdu.\n");
    add("Práce", "Ověřeno");
    for (int time = 0; time < 2; ++time) {
        const auto found = answerOf("mac.mail.search", {});
        ASSERT_EQ(found.at("count"), 1) << json::serialize(found);
        const auto& message = found.at("messages").as_array()[0].as_object();
        EXPECT_EQ(message.at("from"), "Jiří Nový <j@b.cz>");
        EXPECT_EQ(message.at("subject"), "Škola");
        EXPECT_EQ(message.at("unread"), true);
        EXPECT_EQ(message.at("account"), "Práce");
        EXPECT_EQ(answerOf("mac.mail.read", {{"id", message.at("id")}}).at("body"), "Zítra přijdu.\n");
    }
    EXPECT_EQ(answerOf("mac.mail.search", {{"query", "STARA"}, {"account", "prace"}}).at("count"), 1)
        << "also what is read, in the account that is named without diacritics";
}

TEST_F(MailTest, AMailIsSentAfterAYesOnTheComputerAndNotAfterANo) {
    add("Práce", "Ověřeno");
    const auto refused = send(letter, [&] { mac->type("zamitnout"); });
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains("Neodesláno — nepotvrzeno.")) << refused.output;
    const auto sent = send(letter, [&] { mac->type("potvrdit"); });
    EXPECT_EQ(sent.code, 0) << sent.output;
    const auto taken = parseJson(smtp.nextMessage()).value().as_object();
    EXPECT_EQ(taken.at("sender"), RealSmtpServer::username);
    EXPECT_EQ(taken.at("recipients"), json::array{"petr@b.cz"}) << "the refused one never came";
    EXPECT_EQ(taken.at("from"), "Jana Nová <jana@b.cz>");
    EXPECT_EQ(taken.at("subject"), "Schůzka");
    EXPECT_EQ(taken.at("body"), "Přijdu v deset.\n");
}

TEST_F(MailTest, AnAccountThatIsRemovedWhileTheQuestionWaitsSendsNothing) {
    add("Práce", "Ověřeno");
    const auto ended = send(letter, [&] {
        type("ucet-odebrat Práce", "Odebráno: Práce");
        mac->type("potvrdit");
    });
    EXPECT_EQ(ended.code, 1);
    EXPECT_TRUE(ended.output.contains("není připojený")) << ended.output;
    EXPECT_EQ(call("mac.mail.search", {}).code, 1) << "without an account there are no mail tools";
}

TEST_F(MailTest, ThePasswordIsInTheVaultAloneAndGoesWithTheAccount) {
    const std::string password = RealImapServer::password;
    add("Práce", "Ověřeno");
    type("ucty", "Účet: Práce, jana@b.cz, imap.example, smtp.example, výchozí, ověřený");
    EXPECT_EQ(filesWith(password), std::vector<std::string>{"zz.bramwick.Morvex.mac"});
    EXPECT_FALSE(mac->output().contains(password));
    type("ucet-odebrat prace", "Odebráno: Práce");
    EXPECT_TRUE(filesWith(password).empty());
}

TEST_F(MailTest, OneOfTwoAccountsIsTheDefault) {
    add("Práce", "Ověřeno");
    add("Doma", "Ověřeno");
    type("ucet-vychozi doma", "Výchozí účet pro odesílání: Doma");
    type("ucty", "Účet: Doma, jana@b.cz, imap.example, smtp.example, výchozí, ověřený");
    type("ucty", "Potíž: Apple Mail existuje jen v systému macOS.");
}

TEST_F(MailTest, WhatIsWrongWithAnAccountIsTold) {
    add("Heslo", "Potíž: " + std::string(refusedLogin), "jiné");
    type("ucet-overit heslo", "Potíž: " + std::string(refusedLogin));
    add("Jméno", popis(SystemTrouble::certificateOtherName).czech(), RealImapServer::password,
        "servers.example");
    add("Nikde", "Potíž: ", RealImapServer::password, "neexistuje.example");
    add("Dobrý", "Ověřeno");
    type("ucet-overit dobry", "Ověřeno");
}

} // namespace
} // namespace morvex
