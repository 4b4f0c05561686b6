#include "phone/SessionCommands.h"

#include "phone/StatusText.h"
#include "shared/wire/Json.h"
#include "tests/phone/PhoneFixture.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SessionCommandsTest : public PhoneFixture {
  protected:
    /// Starts a call and gives its request id.
    std::string startCall(std::initializer_list<const char*> arguments) {
        startInSession(arguments);
        auto received = mac.take();
        EXPECT_EQ(received.size(), 1U);
        return received.empty() ? "" : received.front().requestID;
    }

    void answer(const std::string& requestID, bool isOk, std::string json) {
        send({MacPayload::ToolResult{isOk, std::move(json)}}, requestID);
    }

    std::vector<MacPayload::ApprovalDecision> takeDecisions() {
        std::vector<MacPayload::ApprovalDecision> decisions;
        for (const auto& received : mac.take())
            if (const auto* told = received.payload.as<MacPayload::ApprovalDecision>())
                decisions.push_back(*told);
        return decisions;
    }
};

TEST_F(SessionCommandsTest, StatusWaitsForTheSessionAndTheReport) {
    paired();
    start({"status"});
    EXPECT_FALSE(ended);
    meet();
    EXPECT_FALSE(ended);
    send({MacPayload::Status{status()}}, "status");
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_THAT(out.str(), StartsWith("Mac        Studovna"));
    EXPECT_EQ(err.str(), "");
    ASSERT_FALSE(socket->closed.empty());
    EXPECT_EQ(socket->closed[0], CloseCode::goingAway);
}

TEST_F(SessionCommandsTest, StatusAsJsonIsTheRecord) {
    startInSession({"status", "--json"});
    auto text = out.str();
    EXPECT_EQ(decode<MacStatus>(text.substr(0, text.size() - 1)).value(), status());
}

TEST_F(SessionCommandsTest, ToolsListsNameRiskAndSummary) {
    startInSession({"tools"});
    EXPECT_THAT(out.str(), HasSubstr("mac.mail.send  mění nebo odesílá  Odešle mail.\n"));
}

TEST_F(SessionCommandsTest, ToolsAsJsonIsAnArray) {
    startInSession({"tools", "--json"});
    EXPECT_EQ(out.str(), toolsJson(status().tools) + "\n");
}

TEST_F(SessionCommandsTest, AMacThatIsNotThereIsUnreachable) {
    paired();
    start({"status", "--timeout", "5"});
    mac.logIn(false);
    run();
    pass(4s);
    EXPECT_FALSE(ended);
    pass(1s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
}

TEST_F(SessionCommandsTest, ARelayThatDoesNotAnswerIsUnreachableAndToldOnceOnTheWay) {
    store.ulozIdentitu(identita).value();
    store.ulozProtejsek(mac.asPeer()).value();
    start({"status", "--timeout", "5"});
    for (int second = 0; second < 5; ++second) pass(1s);
    EXPECT_EQ(ended, ExitCode::relayUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("morvex-phone: Relay se včas neozval: spojení odmítnuto\n"));
    auto first = err.str().find("Spojení přerušeno");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(err.str().find("Spojení přerušeno", first + 1), std::string::npos);
}

TEST_F(SessionCommandsTest, ARelayThatRefusesEndsTheWaitAtOnce) {
    const std::vector<std::pair<RelayFailure, std::string>> rows{
        {RelayFailure::unknownPair, "Relay odmítl spojení: Takový pár neznám."},
        {RelayFailure::revoked, "Relay odmítl spojení: Zařízení bylo odvoláno."},
    };
    for (const auto& [failure, words] : rows) {
        paired();
        start({"status"});
        mac.deliver({RelayMessage::Challenge{toBytes("nonce"), ProtocolVersion::current}});
        mac.deliver({RelayMessage::Failure{failure, "Takový pár neznám."}});
        run();
        EXPECT_EQ(ended, ExitCode::relayUnreachable);
        EXPECT_THAT(err.str(), HasSubstr(words));
    }
}

TEST_F(SessionCommandsTest, CtrlCEndsAWait) {
    paired();
    start({"status"});
    interruption.request_stop();
    run();
    EXPECT_EQ(ended, ExitCode::interrupted);
}

TEST_F(SessionCommandsTest, CallSendsTheArgumentsAndPrintsTheResult) {
    startInSession({"call", "mac.files.read", R"({ "path": "a.txt" })"});
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload,
              (MacPayload{MacPayload::ToolCall{"mac.files.read", R"({"path":"a.txt"})"}}));
    EXPECT_TRUE(Uuid::parse(received[0].requestID));
    answer(received[0].requestID, true, R"({"content":"ahoj"})");
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(out.str(), "content: ahoj\n");
}

TEST_F(SessionCommandsTest, CallWithoutArgumentsSendsAnEmptyObject) {
    startInSession({"call", "mac.status"});
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::ToolCall{"mac.status", "{}"}}));
}

TEST_F(SessionCommandsTest, CallReadsItsArgumentsFromTheInput) {
    startInSession({"call", "mac.files.read", "-"});
    keyboard.type("{\"path\":");
    keyboard.type("\"a.txt\"}");
    run();
    EXPECT_TRUE(mac.take().empty());
    keyboard.end();
    run();
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload,
              (MacPayload{MacPayload::ToolCall{"mac.files.read", R"({"path":"a.txt"})"}}));
}

TEST_F(SessionCommandsTest, ArgumentsThatAreNoObjectAreNotSent) {
    for (const char* arguments : {"[1,2]", "{", "\"text\"", ""}) {
        paired();
        start({"call", "mac.status", arguments});
        EXPECT_EQ(ended, ExitCode::usage) << arguments;
        EXPECT_TRUE(socket->sent.empty());
    }
}

TEST_F(SessionCommandsTest, ARefusalOfTheToolIsToldAndGivesOne) {
    auto id = startCall({"call", "mac.files.read"});
    answer(id, false, R"({"error":"Chybí cesta."})");
    EXPECT_EQ(ended, ExitCode::refused);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "morvex-phone: Chybí cesta.\n");
}

TEST_F(SessionCommandsTest, AFailureWithoutASentenceStillShowsItsResult) {
    auto id = startCall({"call", "mac.terminal.run"});
    answer(id, false, R"({"exit_code":3,"output":"x"})");
    EXPECT_EQ(ended, ExitCode::refused);
    EXPECT_EQ(out.str(), "exit_code: 3\noutput: x\n");
    EXPECT_EQ(err.str(), "morvex-phone: Nástroj skončil neúspěchem.\n");
}

TEST_F(SessionCommandsTest, JsonPrintsTheWholeResultAlsoOfARefusal) {
    auto id = startCall({"call", "mac.files.read", "--json"});
    answer(id, false, R"({"error":"Chybí cesta."})");
    EXPECT_EQ(out.str(), "{\"error\":\"Chybí cesta.\"}\n");
}

TEST_F(SessionCommandsTest, AResultForAnotherRequestIsNotTaken) {
    auto id = startCall({"call", "mac.status"});
    answer("other", true, R"({"device":"cizí"})");
    EXPECT_FALSE(ended);
    answer(id, true, R"({"device":"moje"})");
    EXPECT_EQ(out.str(), "device: moje\n");
}

TEST_F(SessionCommandsTest, ProgressGoesToTheNotesAndStartsTheWaitAnew) {
    auto id = startCall({"call", "mac.codex.run", "--timeout", "10"});
    pass(9s);
    send({MacPayload::ToolProgress{"čtu testy"}}, id);
    pass(9s);
    EXPECT_FALSE(ended);
    answer(id, true, "{}");
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(err.str(), HasSubstr("průběh: čtu testy\n"));
}

TEST_F(SessionCommandsTest, AMacThatStillTellsWhatWasMissedIsNotSilent) {
    startCall({"call", "mac.status", "--timeout", "10"});
    for (int i = 0; i < 3; ++i) {
        pass(9s);
        send({MacPayload::NoteUpdate{
                 {random.uuid(), "Nákup", "mléko", clock.now(), clock.now(), 1, std::nullopt}}},
             "note");
    }
    pass(9s);
    EXPECT_FALSE(ended);
    pass(1s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
}

TEST_F(SessionCommandsTest, ASilentMacEndsTheWaitForAResult) {
    startCall({"call", "mac.status", "--timeout", "10"});
    pass(10s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    EXPECT_THAT(err.str(), HasSubstr("Jestli to provedl, odsud nepoznám."));
}

TEST_F(SessionCommandsTest, AResultThatComesAfterANewSessionStillCounts) {
    auto id = startCall({"call", "mac.status"});
    mac.deliver({RelayMessage::PeerOnline{false}});
    run();
    mac.deliver({RelayMessage::PeerOnline{true}});
    run();
    mac.exchangeHellos();
    run();
    answer(id, true, R"({"device":"Studovna"})");
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(SessionCommandsTest, AnApprovalIsShownAskedAndAnsweredOnATerminal) {
    keyboard.interactive = true;
    auto id = startCall({"call", "mac.notes.create"});
    send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
    EXPECT_THAT(err.str(), HasSubstr("Rozhodnout se dá i v okně Macu.\n"));
    EXPECT_THAT(err.str(), HasSubstr("Mac žádá o potvrzení: Odeslat mail\n"));
    EXPECT_THAT(err.str(), HasSubstr("zbývá 120 s"));
    EXPECT_THAT(err.str(), HasSubstr("Komu: eva@example.org\n"));
    keyboard.type("co?");
    run();
    EXPECT_TRUE(takeDecisions().empty());
    keyboard.type("a");
    run();
    EXPECT_EQ(takeDecisions(), (std::vector{MacPayload::ApprovalDecision{"A1", true, std::nullopt}}));
    EXPECT_FALSE(ended);
    answer(id, true, "{}");
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(SessionCommandsTest, WhatTheRunningCallItselfAsksIsDecidedAtTheMac) {
    for (const auto* word : {"yes", "no", "ask"}) {
        keyboard.interactive = true;
        err.str("");
        auto id = startCall({"call", "mac.mail.send", "--approve", word});
        send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
        EXPECT_THAT(err.str(), HasSubstr("Mac žádá o potvrzení: Odeslat mail\n"));
        EXPECT_THAT(err.str(),
                    HasSubstr("Rozhodni na Macu: dokud na to čeká tohle volání, odpověď odsud nepřečte.\n"));
        EXPECT_THAT(err.str(), Not(HasSubstr("Potvrdit?")));
        EXPECT_THAT(err.str(), Not(HasSubstr("Rozhodnout se dá")));
        EXPECT_TRUE(takeDecisions().empty());
        answer(id, true, "{}");
        EXPECT_EQ(ended, ExitCode::done);
    }
}

TEST_F(SessionCommandsTest, AnApprovalHoldsTheWaitUntilItLapses) {
    auto id = startCall({"call", "mac.mail.send", "--timeout", "10"});
    send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
    pass(119s);
    EXPECT_FALSE(ended);
    answer(id, false, R"({"error":"Neodesláno — nepotvrzeno."})");
    EXPECT_EQ(ended, ExitCode::refused);
}

TEST_F(SessionCommandsTest, AnApprovalThatLastsForEverDoesNotHoldTheWaitForEver) {
    startCall({"call", "mac.mail.send", "--timeout", "10"});
    auto endless = approval("mac.mail.send");
    endless.expiresAt = *parseWireDate("9999-12-31T23:59:59Z");
    send({MacPayload::Approval{endless}}, "A1");
    pass(10min);
    EXPECT_FALSE(ended);
    pass(10s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
}

TEST_F(SessionCommandsTest, AnApprovalIsAnsweredAsTheOptionSays) {
    for (const auto& [word, isApproved] : {std::pair{"yes", true}, {"no", false}}) {
        auto id = startCall({"call", "mac.notes.create", "--approve", word});
        send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
        EXPECT_EQ(takeDecisions(),
                  (std::vector{MacPayload::ApprovalDecision{"A1", isApproved, std::nullopt}}));
        answer(id, true, "{}");
    }
}

TEST_F(SessionCommandsTest, WithoutATerminalAnApprovalIsLeftToTheMac) {
    startCall({"call", "mac.notes.create"});
    send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
    EXPECT_TRUE(takeDecisions().empty());
    EXPECT_THAT(err.str(), HasSubstr("Tady se neptám, rozhodni v okně Macu."));
}

TEST_F(SessionCommandsTest, AnApprovalThatLapsedIsNotAnswered) {
    keyboard.interactive = true;
    startCall({"call", "mac.notes.create", "--timeout", "300"});
    send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
    pass(120s);
    keyboard.type("a");
    run();
    EXPECT_TRUE(takeDecisions().empty());
    auto old = approval("mac.mail.send");
    old.expiresAt = clock.now();
    send({MacPayload::Approval{old}}, "A1");
    EXPECT_EQ(err.str().find("Mac žádá"), err.str().rfind("Mac žádá"));
}

TEST_F(SessionCommandsTest, WatchPrintsEveryEventUntilCtrlC) {
    startInSession({"watch"});
    MorvexNote note;
    note.title = "Nákup\x1b[2J";
    send({MacPayload::NoteUpdate{note}}, "note:1");
    send({MacPayload::ToolProgress{"čtu"}}, "mac-local:1");
    EXPECT_THAT(out.str(), HasSubstr("spojení: Připojuji…\n"));
    EXPECT_THAT(out.str(), HasSubstr("spojení: Připraven\n"));
    EXPECT_THAT(out.str(), HasSubstr("stav Macu: Studovna, nástrojů: 2\n"));
    EXPECT_THAT(out.str(), HasSubstr("poznámka: Nákup\uFFFD[2J\n"));
    EXPECT_THAT(out.str(), HasSubstr("průběh: čtu\n"));
    interruption.request_stop();
    run();
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(SessionCommandsTest, WatchAsJsonIsOneObjectALine) {
    startInSession({"watch", "--json"});
    send({MacPayload::ToolProgress{"čtu"}}, "R1");
    std::istringstream lines(out.str());
    std::string last;
    for (std::string line; std::getline(lines, line); last = line) EXPECT_TRUE(parseJson(line)) << line;
    EXPECT_EQ(last, R"({"event":"message","requestID":"R1","payload":{"toolProgress":{"text":"čtu"}}})");
}

TEST_F(SessionCommandsTest, WatchEndsWhenThePairIsRevokedOrItsReaderGoes) {
    startInSession({"watch"});
    mac.deliver({RelayMessage::Failure{RelayFailure::revoked, "Pryč."}});
    run();
    EXPECT_EQ(ended, ExitCode::relayUnreachable);

    startInSession({"watch"});
    out.setstate(std::ios::badbit);
    send({MacPayload::ToolProgress{"čtu"}}, "R1");
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(SessionCommandsTest, ApproveSendsADecisionByItsId) {
    paired();
    start({"approve", "A7", "no"});
    meet();
    EXPECT_EQ(takeDecisions(), (std::vector{MacPayload::ApprovalDecision{"A7", false, std::nullopt}}));
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(SessionCommandsTest, ApproveWithoutAnIdWaitsForARequestAndAsks) {
    keyboard.interactive = true;
    startInSession({"approve"});
    send({MacPayload::Approval{approval("mac.notes.delete")}}, "A1");
    keyboard.type("n");
    run();
    EXPECT_EQ(takeDecisions(), (std::vector{MacPayload::ApprovalDecision{"A1", false, std::nullopt}}));
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(SessionCommandsTest, ApproveNeedsAnIdWhereNobodyCanBeAsked) {
    paired();
    start({"approve"});
    EXPECT_EQ(ended, ExitCode::usage);
    paired();
    start({"approve", "A1", "maybe"});
    EXPECT_EQ(ended, ExitCode::usage);
}

TEST_F(SessionCommandsTest, ApproveEndsWhenNothingIsAsked) {
    startInSession({"approve", "--approve", "yes"});
    pass(10min);
    EXPECT_EQ(ended, ExitCode::refused);
}

} // namespace
} // namespace morvex
