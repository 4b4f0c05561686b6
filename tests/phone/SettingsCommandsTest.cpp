#include "phone/SettingsCommands.h"

#include "shared/wire/CustomAppLimits.h"
#include "tests/phone/PhoneFixture.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

class SettingsCommandsTest : public PhoneFixture {
  protected:
    void type(std::string line) {
        keyboard.type(std::move(line));
        run();
    }

    /// The one message that the phone sent since the last look.
    MacPayload takeMessage() {
        auto received = mac.take();
        EXPECT_EQ(received.size(), 1U);
        return received.empty() ? MacPayload{} : received[0].payload;
    }

    using Kind = PhoneSettings::Kind;

    std::vector<CompanionCustomApp> takeApps() {
        auto message = takeMessage();
        const auto* sent = message.as<MacPayload::CustomApps>();
        return sent ? sent->apps : std::vector<CompanionCustomApp>{};
    }
};

TEST_F(SettingsCommandsTest, TheKeyIsALineOfTheInputAndAResultBehindItConfirmsIt) {
    startInSession({"key"});
    EXPECT_TRUE(mac.take().empty());
    type(" sk-1 ");
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::OpenAICredential{"sk-1"}}));
    send({MacPayload::Status{status()}}, "status");
    EXPECT_FALSE(ended) << "a report may have been on its way before";
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(err.str(), "Mac to převzal.\n");
}

TEST_F(SettingsCommandsTest, ADashTakesTheKeyAway) {
    startInSession({"key"});
    type("-");
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::OpenAICredential{""}}));
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(SettingsCommandsTest, WithoutALineNoKeyIsSent) {
    startInSession({"key"});
    type("  ");
    EXPECT_EQ(ended, ExitCode::usage);
    EXPECT_THAT(err.str(), HasSubstr("Klíč je prázdný. Z Macu ho smaže '-'."));
    EXPECT_TRUE(mac.take().empty());
    startInSession({"key"});
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::usage);
    EXPECT_TRUE(mac.take().empty());
}

TEST_F(SettingsCommandsTest, APersonIsAskedForTheKeyAndTypesItHidden) {
    keyboard.interactive = true;
    startInSession({"key"});
    EXPECT_THAT(err.str(), HasSubstr("OpenAI klíč ('-' ho z Macu smaže): "));
    EXPECT_TRUE(keyboard.isHidden);
    type("sk-1");
    EXPECT_FALSE(keyboard.isHidden);
    EXPECT_THAT(err.str() + out.str(), Not(HasSubstr("sk-1")));
}

TEST_F(SettingsCommandsTest, AnInterruptionShowsTheTypingAgain) {
    startInSession({"key"});
    EXPECT_TRUE(keyboard.isHidden);
    interruption.request_stop();
    run();
    EXPECT_EQ(ended, ExitCode::interrupted);
    EXPECT_FALSE(keyboard.isHidden);
}

TEST_F(SettingsCommandsTest, AnAnswerToAnApprovalIsNoKey) {
    keyboard.interactive = true;
    startInSession({"key"});
    send({MacPayload::Approval{approval("mac.notes.create")}}, "A1");
    type("a");
    EXPECT_TRUE(takeMessage().as<MacPayload::ApprovalDecision>());
    EXPECT_TRUE(keyboard.isHidden);
    type("sk-1");
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::OpenAICredential{"sk-1"}}));
}

TEST_F(SettingsCommandsTest, AKeyThatMayHaveBeenLostWithItsSessionIsNotCalledTaken) {
    startInSession({"key"});
    type("sk-1");
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::OpenAICredential{"sk-1"}}));
    mac.deliver({RelayMessage::PeerOnline{false}});
    mac.deliver({RelayMessage::PeerOnline{true}});
    run();
    mac.exchangeHellos();
    run();
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("Spojení se přerušilo, Mac to možná nemá. Zkus to znovu."));
    EXPECT_THAT(err.str(), Not(HasSubstr("Mac to převzal.")));
}

TEST_F(SettingsCommandsTest, AMacThatDoesNotAnswerBehindTheKeyIsUnreachable) {
    startInSession({"key", "--timeout", "5"});
    type("sk-1");
    pass(5s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
}

TEST_F(SettingsCommandsTest, PreferencesAreKeptAndSentWhole) {
    auto set = [this](std::initializer_list<const char*> words) {
        startInSession(words);
        auto sent = takeMessage();
        reachMilestones();
        EXPECT_EQ(ended, ExitCode::done);
        return sent;
    };
    EXPECT_EQ(set({"preferences", "language", "de"}), (MacPayload{MacPayload::Preferences{{"de", "", {}}}}));
    EXPECT_EQ(err.str(), "Mac to převzal.\n");
    EXPECT_EQ(set({"preferences", "voice", "marin"}),
              (MacPayload{MacPayload::Preferences{{"de", "marin", {}}}}));
    set({"preferences", "place", "Domov", "Krátká 2"});
    set({"preferences", "place", "Práce", "Dlouhá 1"});
    EXPECT_EQ(set({"preferences", "place", "DOMOV", "Nová 3"}),
              (MacPayload{
                  MacPayload::Preferences{{"de", "marin", {{{"Práce", "Dlouhá 1"}, {"DOMOV", "Nová 3"}}}}}}));
    set({"preferences", "place", "domov"});
    EXPECT_EQ(set({"preferences", "place", "prace"}),
              (MacPayload{MacPayload::Preferences{{"de", "marin", std::vector<CompanionPlace>{}}}}));
}

TEST_F(SettingsCommandsTest, WhatALostLinkMayHaveTakenAlongIsOfferedInTheNextSession) {
    startInSession({"preferences", "language", "de", "--timeout", "5"});
    (void)mac.take();
    mac.deliver({RelayMessage::PeerOnline{false}});
    run();
    pass(5s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("Tady je to uložené; Mac to dostane při příštím spojení."));

    startInSession({"status"});
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::Preferences{{"de", "", {}}}}));
}

TEST_F(SettingsCommandsTest, ANewSessionOffersAgainAndOnlyItsOwnAnswerConfirms) {
    startInSession({"preferences", "language", "de"});
    (void)mac.take();
    const auto old = mac.milestones().back();
    mac.deliver({RelayMessage::PeerOnline{false}});
    mac.deliver({RelayMessage::PeerOnline{true}});
    run();
    mac.exchangeHellos();
    run();
    send({MacPayload::ToolResult{true, "{}"}}, old);
    EXPECT_FALSE(ended) << "the answer to the session that is over";
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::Preferences{{"de", "", {}}}}));
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_TRUE(settings.isConfirmed(Kind::preferences));
}

TEST_F(SettingsCommandsTest, AMacThatIsAwayGetsTheSettingNextTime) {
    paired();
    start({"preferences", "voice", "marin", "--timeout", "5"});
    pass(5s);
    EXPECT_EQ(ended, ExitCode::relayUnreachable);
    EXPECT_EQ(settings.preferences().value().voice, "marin");
    EXPECT_FALSE(settings.isConfirmed(Kind::preferences));
}

TEST_F(SettingsCommandsTest, ARemovalThatGotLostIsOfferedAgainToo) {
    ASSERT_TRUE(settings.keep(std::vector<CompanionCustomApp>{{"1", "Počasí", "https://a", ""}}));
    settings.confirm(Kind::apps);
    startInSession({"apps", "remove", "pocasi", "--timeout", "5"});
    pass(5s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    startInSession({"status"});
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::CustomApps{}}));
}

TEST_F(SettingsCommandsTest, WhatIsKeptIsShownWithoutAMac) {
    settings.keep(CompanionPreferences{"de", "", {{{"Domov", "Krátká 2"}}}}).value();
    start({"preferences"});
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(out.str(), "Jazyk      de\nHlas       nezvoleno\nMísto      Domov: Krátká 2\n");
    out.str("");
    start({"preferences", "--json"});
    EXPECT_EQ(out.str(), R"({"language":"de","voice":"","places":[{"name":"Domov","address":"Krátká 2"}]})"
                         "\n");
}

TEST_F(SettingsCommandsTest, WrongWordsAreToldAndNothingIsSent) {
    paired();
    start({"preferences", "colour", "blue"});
    EXPECT_EQ(ended, ExitCode::usage);
    EXPECT_THAT(err.str(), HasSubstr("Použití: preferences [language CODE"));
    EXPECT_TRUE(socket->sent.empty());
    paired();
    start({"apps", "paint"});
    EXPECT_EQ(ended, ExitCode::usage);
    EXPECT_THAT(err.str(), HasSubstr("Použití: apps list | add NAME ADDRESS | remove NAME"));
    EXPECT_TRUE(socket->sent.empty());
}

TEST_F(SettingsCommandsTest, AppsAreSentAsAWholeListWithTheTokensOfTheInput) {
    startInSession({"apps", "add", "Počasí", "https://example.com"});
    type("tajné");
    auto first = takeApps();
    ASSERT_EQ(first.size(), 1U);
    EXPECT_TRUE(Uuid::parse(first[0].id));
    EXPECT_EQ(first[0], (CompanionCustomApp{first[0].id, "Počasí", "https://example.com", "tajné"}));
    EXPECT_FALSE(ended);
    EXPECT_FALSE(settings.isConfirmed(Kind::apps));
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(settings.apps().value(), first);
    EXPECT_THAT(err.str() + out.str(), Not(HasSubstr("tajné")));

    startInSession({"apps", "add", "Jízdní řády", "https://rady.example"});
    type("");
    auto second = takeApps();
    reachMilestones();
    ASSERT_EQ(second.size(), 2U);
    EXPECT_EQ(second[1].token, "");

    startInSession({"apps", "add", "POCASI", "https://nove.example"});
    type("");
    auto third = takeApps();
    reachMilestones();
    ASSERT_EQ(third.size(), 2U);
    EXPECT_EQ(third[0], (CompanionCustomApp{first[0].id, "Počasí", "https://nove.example", ""}));

    startInSession({"apps", "remove", "pocasi"});
    EXPECT_EQ(takeApps(), std::vector{second[1]});
    reachMilestones();
    EXPECT_EQ(settings.apps().value(), std::vector{second[1]});
    paired();
    start({"apps", "remove", "pocasi"});
    EXPECT_EQ(ended, ExitCode::refused);
}

TEST_F(SettingsCommandsTest, AnAppThatTheMacWouldDropIsRefusedBeforeAnythingIsAskedOrSent) {
    const std::string tooLong = "https://example.com/" + std::string(5000, 'x');
    for (const char* address : {"http://example.com", "example.com", "https://", "", tooLong.c_str()}) {
        err.str("");
        paired();
        start({"apps", "add", "Počasí", address});
        EXPECT_EQ(ended, ExitCode::usage) << address;
        EXPECT_THAT(err.str(), HasSubstr("Tuhle aplikaci by Mac nepřevzal"));
        EXPECT_TRUE(mac.take().empty());
    }
    EXPECT_TRUE(settings.apps().value().empty());
}

TEST_F(SettingsCommandsTest, AListThatIsFullTakesNoFurtherAppButChangesOne) {
    std::vector<CompanionCustomApp> apps;
    for (std::size_t i = 0; i < customAppLimits::mostApps; ++i)
        apps.push_back({std::to_string(i), "Aplikace " + std::to_string(i), "https://a", ""});
    ASSERT_TRUE(settings.keep(apps));
    settings.confirm(Kind::apps);
    startInSession({"apps", "add", "Aplikace 7", "https://b"});
    type("");
    EXPECT_EQ(takeApps().size(), customAppLimits::mostApps);
    reachMilestones();
    EXPECT_EQ(ended, ExitCode::done);
    paired();
    start({"apps", "add", "Další", "https://b"});
    EXPECT_EQ(ended, ExitCode::usage);
    EXPECT_THAT(err.str(), HasSubstr("Víc než 256 aplikací by Mac nepřevzal."));
    EXPECT_TRUE(mac.take().empty());
}

TEST_F(SettingsCommandsTest, ANewMacGetsWhatWasSetBeforeUntilItHasIt) {
    const CompanionPreferences preferences{"de", "ash", {}};
    const std::vector<CompanionCustomApp> apps{{"1", "Počasí", "https://example.com", "t"}};
    ASSERT_TRUE(settings.keep(preferences));
    ASSERT_TRUE(settings.keep(apps));
    startInSession({"status"});
    auto received = mac.take();
    ASSERT_EQ(received.size(), 2U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::Preferences{preferences}}));
    EXPECT_EQ(received[1].payload, (MacPayload{MacPayload::CustomApps{apps}}));

    startInSession({"watch"});
    EXPECT_EQ(mac.take().size(), 2U) << "a status proves nothing";
    reachMilestones();
    EXPECT_TRUE(settings.isConfirmed(Kind::preferences));
    EXPECT_TRUE(settings.isConfirmed(Kind::apps));
    EXPECT_THAT(out.str(), Not(HasSubstr("výsledek"))) << "a milestone is nobody's news";
}

TEST_F(SettingsCommandsTest, ANewMacGetsNothingWhereNothingWasSet) {
    ASSERT_TRUE(settings.forgetConfirmations());
    startInSession({"status"});
    EXPECT_TRUE(mac.take().empty());
}

TEST_F(SettingsCommandsTest, AppsAreListedWithoutTheirTokens) {
    start({"apps", "list"});
    EXPECT_EQ(out.str(), "Žádné vlastní aplikace.\n");
    out.str("");
    settings
        .keep(std::vector<CompanionCustomApp>{{"1", "Počasí", "https://a", "tajné"},
                                              {"2", "Řády", "https://b", ""}})
        .value();
    start({"apps", "list"});
    EXPECT_EQ(out.str(), "Počasí  https://a  s tokenem\nŘády  https://b\n");
    out.str("");
    start({"apps", "list", "--json"});
    EXPECT_EQ(out.str(), R"([{"id":"1","name":"Počasí","endpoint":"https://a","hasToken":true},)"
                         R"({"id":"2","name":"Řády","endpoint":"https://b","hasToken":false}])"
                         "\n");
}

TEST_F(SettingsCommandsTest, TheShellTakesThemTooWithTheSecretOnTheNextLine) {
    startInSession({"shell"});
    type("key");
    type("sk-1");
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::OpenAICredential{"sk-1"}}));
    reachMilestones();
    type("preferences place \"U babičky\" \"Dlouhá 1, Praha\"");
    EXPECT_EQ(takeMessage(),
              (MacPayload{MacPayload::Preferences{{"", "", {{{"U babičky", "Dlouhá 1, Praha"}}}}}}));
    reachMilestones();
    type("preferences place \"U babičky\" \"\"");
    EXPECT_EQ(takeMessage(), (MacPayload{MacPayload::Preferences{{"", "", {{{"U babičky", ""}}}}}}))
        << "an empty address is no removal";
    reachMilestones();
    type("apps add Počasí https://example.com");
    type("tajné");
    EXPECT_EQ(takeApps().size(), 1U);
    reachMilestones();
    type("preferences");
    type("apps list");
    type("apps");
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::usage) << "apps alone says nothing";
    EXPECT_THAT(out.str(), HasSubstr("U babičky: \n"));
    EXPECT_THAT(out.str(), HasSubstr("Počasí  https://example.com  s tokenem\n"));
}

} // namespace
} // namespace morvex
