#include "app/mail/bridge/MailScripts.h"

#include "shared/wire/TalkSpanError.h"
#include "tests/app/mail/bridge/MailFixture.h"

namespace morvex {
namespace {

/// Message 7 lies in the second account, behind a mailbox that refuses.
constexpr std::string_view twoAccounts = R"({"accounts": [
  {"name": "Práce", "emailAddresses": ["jana@firma.example", "j@firma.example"], "mailboxes": [
    {"name": "Odeslané", "messages": [{"id": 6, "content": "Odpověď.\nDruhý řádek"}]}]},
  {"name": "Domov", "emailAddresses": [], "mailboxes": [
    {"name": "Rozbitá", "messages": {"error": "Can't get object.", "number": -1728}},
    {"name": "Archiv", "messages": [{"id": 7, "content": ""}]}]}]})";

class MailScriptsTest : public MailFixture {
  protected:
    MailScriptsTest() { mailIs(twoAccounts); }

    Result<std::string> read(const std::string& id, std::vector<std::string> accounts) {
        return wait(bridge.obsah(id, std::move(accounts)));
    }
};

constexpr auto notFound = "Error: Zprávu s tímhle číslem jsem nenašel.";

TEST_F(MailScriptsTest, ReadsAMessageOfAnyMailbox) {
    EXPECT_EQ(read("6", {"Práce"}), "Odpověď.\nDruhý řádek");
}

TEST_F(MailScriptsTest, AnEmptyMessageIsAnEmptyText) {
    EXPECT_EQ(read("7", {"Domov"}), "");
}

TEST_F(MailScriptsTest, AMailboxThatRefusesIsPassedOver) {
    EXPECT_EQ(read("7", {"Práce", "Domov"}), "");
    EXPECT_EQ(sentence(read("8", {"Domov"})), notFound);
}

TEST_F(MailScriptsTest, AMessageOfAnotherAccountIsNotFound) {
    EXPECT_EQ(sentence(read("6", {"Domov"})), notFound);
    EXPECT_EQ(sentence(read("6", {"Neznámý"})), notFound);
}

TEST_F(MailScriptsTest, AccountsToReadFromAreComparedWithoutDiacritics) {
    EXPECT_TRUE(read("6", {"PRACE"}));
}

TEST_F(MailScriptsTest, WithoutAListOfAccountsAllAreReadFrom) {
    EXPECT_TRUE(read("6", {}));
    EXPECT_TRUE(read("7", {}));
}

TEST_F(MailScriptsTest, ANumberThatIsNoneFindsNothing) {
    for (const auto* id : {"", "x", "-1", "99999999999999999999", "6') || true || ('"})
        EXPECT_EQ(sentence(read(id, {"Domov"})), notFound) << id;
}

TEST_F(MailScriptsTest, SendsFromTheFirstAddressOfTheAccount) {
    EXPECT_EQ(wait(bridge.odeslat("prace", "a@b.example", "Ahoj", "Text\nna dva řádky")), "Odesláno.");
    EXPECT_EQ(outgoing(), (boost::json::object{{"recipients", {"a@b.example"}},
                                               {"isPushed", true},
                                               {"isSent", true},
                                               {"subject", "Ahoj"},
                                               {"content", "Text\nna dva řádky"},
                                               {"visible", false},
                                               {"sender", "jana@firma.example"}}));
}

TEST_F(MailScriptsTest, WithoutAnAccountMailChoosesTheSender) {
    EXPECT_EQ(wait(bridge.odeslat("", "a@b.example", "", "t")), "Odesláno.");
    EXPECT_FALSE(outgoing().contains("sender"));
}

TEST_F(MailScriptsTest, AnAccountWithoutAnAddressSendsNothing) {
    EXPECT_EQ(sentence(wait(bridge.odeslat("Domov", "a@b.example", "", "t"))),
              "Error: Účet nemá nastavenou adresu.");
    EXPECT_TRUE(journal().at("outgoing").as_array().empty());
}

TEST_F(MailScriptsTest, AnUnknownAccountSendsNothing) {
    EXPECT_EQ(sentence(wait(bridge.odeslat("Škola", "a@b.example", "", "t"))),
              R"(Error: Účet "Škola" neznám. Mám tyhle: Práce, Domov.)");
    EXPECT_TRUE(journal().at("outgoing").as_array().empty());
}

TEST_F(MailScriptsTest, ADraftIsOpenOnTheScreenAndNotSent) {
    EXPECT_EQ(wait(bridge.koncept("Práce", "a@b.example", "Ahoj", "Text")), "Koncept je otevřený v Mailu.");
    EXPECT_EQ(outgoing(), (boost::json::object{{"recipients", {"a@b.example"}},
                                               {"isPushed", true},
                                               {"isSent", false},
                                               {"subject", "Ahoj"},
                                               {"content", "Text"},
                                               {"visible", true},
                                               {"sender", "jana@firma.example"}}));
}

TEST_F(MailScriptsTest, TellsTheNamesOfTheAccounts) {
    const std::string script(mailScripts::accounts);
    EXPECT_EQ(run<std::vector<std::string>>(script), (std::vector<std::string>{"Práce", "Domov"}));
    for (const auto* none : {R"({"accounts": []})", R"({"accounts": null})"}) {
        mailIs(none);
        EXPECT_EQ(run<std::vector<std::string>>(script), std::vector<std::string>{}) << none;
    }
}

TEST_F(MailScriptsTest, NoParameterBreaksOutOfTheScript) {
    for (const std::string text :
         {"\"; throw new Error('out'); \"", "'\\'\\\\", "\n}\nthrow new Error('out');\nfunction x() {",
          "</script>", "${PARAMS}", "`", "/* */ // \\u0022", "a\u2028b\u2029c", "\"});",
          "\r\nBcc: x@y.example"}) {
        ASSERT_EQ(wait(bridge.odeslat("", text, text, text)), "Odesláno.") << text;
        EXPECT_EQ(outgoing().at("recipients"), (boost::json::array{text}));
        EXPECT_EQ(outgoing().at("subject").as_string(), text);
        EXPECT_EQ(outgoing().at("content").as_string(), text);
    }
    const std::string zero("a\0b", 3);
    ASSERT_TRUE(wait(bridge.odeslat("", zero, "", "")));
    EXPECT_EQ(outgoing().at("recipients"), (boost::json::array{zero}));
}

TEST_F(MailScriptsTest, ARefusalOfTheSystemNamesTheSetting) {
    mailIs(
        R"({"refusal": {"error": "Error: Not authorized to send Apple events to Mail.", "number": -1743}})");
    EXPECT_EQ(sentence(read("6", {})),
              "macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → "
              "Automatizace a povol tam Morvex přístup k Mailu.");
}

TEST_F(MailScriptsTest, AMailWithAnotherDictionaryIsToldAsThat) {
    mailIs(R"({"accounts": [], "lacks": ["accounts"]})");
    EXPECT_EQ(sentence(read("6", {})), "Apple Mail neposkytl podporované automatizační rozhraní.");
}

constexpr auto unreadable = "Mail vrátil něco, čemu nerozumím.";

TEST_F(MailScriptsTest, NothingIsNoListAndNoText) {
    for (const auto* script : {"", "return null;", "return undefined;", "return 5;", "return {};"}) {
        EXPECT_EQ(sentence(run<std::vector<MailZprava>>(script)), unreadable) << script;
        EXPECT_EQ(sentence(run<std::string>(script)), unreadable) << script;
    }
}

TEST_F(MailScriptsTest, OneMessageThatIsNoneSpoilsTheList) {
    EXPECT_EQ(sentence(run<std::vector<MailZprava>>("return [{ id: '1' }, { id: 2 }];")), unreadable);
    EXPECT_EQ(sentence(run<std::vector<MailZprava>>("return [{ precteno: 'ano' }];")), unreadable);
}

TEST_F(MailScriptsTest, AScriptGetsItsParameters) {
    EXPECT_EQ(run<std::string>("return PARAMS.a + PARAMS.b.length;", {{"a", "x"}, {"b", {1, 2}}}), "x2");
}

TEST_F(MailScriptsTest, AnEndlessMessageIsReadToItsEndAndNotKept) {
    EXPECT_EQ(sentence(run<std::string>("return 'a'.repeat(100 * 1024 * 1024);")), unreadable);
    EXPECT_EQ(run<std::string>("return 'a'.repeat(10 * 1024 * 1024);").value().size(), 10U * 1024 * 1024);
}

TEST_F(MailScriptsTest, AProgramThatIsTooLongForTheSystemIsAFailedLaunch) {
    const auto sent = wait(bridge.odeslat("", "a@b.example", "", std::string(8UL * 1024 * 1024, 'a')));
    ASSERT_FALSE(sent);
    EXPECT_TRUE(sent.error().as<TalkSpanError>());
    EXPECT_TRUE(sentence(sent).contains("Nepodařilo se spustit: ")) << sentence(sent);
}

} // namespace
} // namespace morvex
