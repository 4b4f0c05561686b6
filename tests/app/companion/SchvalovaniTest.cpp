#include "app/approvals/Schvalovani.h"

#include "tests/support/CompanionHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

Task<void> ask(Schvalovani& approvals, std::string detail, std::shared_ptr<std::optional<bool>> answer) {
    answer->emplace(
        co_await approvals.pozadat("mac.mail.send", "Odeslat mail", "Mám odeslat mail?", std::move(detail)));
}

class SchvalovaniTest : public CompanionHarness {
  protected:
    std::shared_ptr<std::optional<bool>> askFor(const std::string& detail) {
        auto answer = std::make_shared<std::optional<bool>>();
        executor.start(ask(companion->schvalovani(), detail, answer));
        executor.runUntilIdle();
        return answer;
    }

    std::optional<ApprovalRequest> open() { return companion->schvalovani().zadost().value(); }

    std::vector<ApprovalRequest> takeRequests() {
        std::vector<ApprovalRequest> requests;
        for (const auto& received : phone.take())
            if (const auto* approval = received.payload.as<MacPayload::Approval>()) {
                EXPECT_EQ(received.requestID, approval->request.id);
                requests.push_back(approval->request);
            }
        return requests;
    }
};

TEST_F(SchvalovaniTest, ShowsTheRequestHereAndOnThePhone) {
    startSecured();
    auto answer = askFor("Komu: a@b.cz");
    ASSERT_TRUE(open());
    EXPECT_EQ(open()->tool, "mac.mail.send");
    EXPECT_EQ(open()->title, "Odeslat mail");
    EXPECT_EQ(open()->spoken, "Mám odeslat mail?");
    EXPECT_EQ(open()->detail, "Komu: a@b.cz");
    EXPECT_EQ(open()->contentHash, "d73baab2454d46a3");
    EXPECT_EQ(open()->expiresAt, clock.now() + 120s);
    auto sent = takeRequests();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].id, open()->id);
    EXPECT_EQ(sent[0].contentHash, "d73baab2454d46a3");
    EXPECT_FALSE(*answer);
}

TEST_F(SchvalovaniTest, TheHashIsThatOfTheDetailAlone) {
    start();
    askFor("");
    EXPECT_EQ(open()->contentHash, "e3b0c44298fc1c14");
}

TEST_F(SchvalovaniTest, ADecisionHereEndsTheRequest) {
    start();
    for (bool decision : {true, false}) {
        auto answer = askFor("x");
        companion->schvalovani().rozhodnout(decision);
        executor.runUntilIdle();
        EXPECT_EQ(*answer, decision);
        EXPECT_FALSE(open());
    }
}

TEST_F(SchvalovaniTest, ADecisionOfThePhoneEndsTheRequestWithItsIdOnly) {
    startSecured();
    auto answer = askFor("x");
    phone.send({MacPayload::ApprovalDecision{"jiné", true, {}}}, "a");
    executor.runUntilIdle();
    EXPECT_FALSE(*answer);
    phone.send({MacPayload::ApprovalDecision{open()->id, true, "protože"}}, "b");
    executor.runUntilIdle();
    EXPECT_EQ(*answer, true);
}

TEST_F(SchvalovaniTest, ANoOfThePhoneIsANo) {
    startSecured();
    auto answer = askFor("x");
    phone.send({MacPayload::ApprovalDecision{open()->id, false, {}}}, "a");
    executor.runUntilIdle();
    EXPECT_EQ(*answer, false);
    EXPECT_FALSE(open());
}

TEST_F(SchvalovaniTest, ARequestLapsesAfter120Seconds) {
    start();
    auto answer = askFor("x");
    clock.advance(120s - 1ms);
    executor.runUntilIdle();
    EXPECT_FALSE(*answer);
    clock.advance(1ms);
    executor.runUntilIdle();
    EXPECT_EQ(*answer, false);
    EXPECT_FALSE(open());
}

TEST_F(SchvalovaniTest, TheExpiryOfADecidedRequestLeavesANewerOneAlone) {
    start();
    askFor("first");
    clock.advance(100s);
    companion->schvalovani().rozhodnout(true);
    auto second = askFor("second");
    clock.advance(20s);
    executor.runUntilIdle();
    EXPECT_FALSE(*second);
    EXPECT_EQ(open()->detail, "second");
}

TEST_F(SchvalovaniTest, ASecondAskerIsRefusedAtOnceAndTheFirstIsNotDisturbed) {
    startSecured();
    auto first = askFor("first");
    auto second = askFor("second");
    EXPECT_EQ(*second, false);
    EXPECT_FALSE(*first);
    EXPECT_EQ(open()->detail, "first");
    EXPECT_EQ(takeRequests().size(), 1U);
}

TEST_F(SchvalovaniTest, ACallOfThePhoneThatWaitsKeepsThePhonesOwnDecisionUnread) {
    ManualExecutor slow;
    workers = &slow;
    startSecured();
    allowFolder("Projekty");
    phone.call("mac.files.search", "{}", "waiting");
    executor.runUntilIdle();
    auto answer = askFor("x");
    phone.send({MacPayload::ApprovalDecision{open()->id, true, {}}}, "decision");
    executor.runUntilIdle();
    EXPECT_FALSE(*answer);
    EXPECT_TRUE(open());

    slow.runUntilIdle();
    executor.runUntilIdle();
    EXPECT_EQ(*answer, true);
    end();
}

TEST_F(SchvalovaniTest, WithoutALinkTheRequestStandsHereAlone) {
    start();
    auto answer = askFor("x");
    EXPECT_TRUE(open());
    EXPECT_FALSE(*answer);
}

TEST_F(SchvalovaniTest, ARequestThatCannotBeSentStandsHereAndLapses) {
    startPaired();
    phone.logIn();
    executor.runUntilIdle();
    auto before = trouble();
    auto answer = askFor("x");
    EXPECT_TRUE(takeRequests().empty());
    EXPECT_TRUE(open());
    EXPECT_EQ(trouble(), before);
    clock.advance(120s);
    executor.runUntilIdle();
    EXPECT_EQ(*answer, false);
}

TEST_F(SchvalovaniTest, AViewThatDecidesAtOnceSparesThePhoneTheQuestion) {
    startSecured();
    auto watch = companion->schvalovani().zadost().addNotifier([this] {
        if (open()) companion->schvalovani().rozhodnout(true);
    });
    EXPECT_EQ(*askFor("x"), true);
    EXPECT_TRUE(takeRequests().empty());
}

TEST_F(SchvalovaniTest, AtTheEndOfTheProgramTheAnswerIsNo) {
    start();
    auto open = askFor("x");
    EXPECT_TRUE(executor.run(companion->shutDown()));
    EXPECT_EQ(*open, false);
    EXPECT_EQ(*askFor("late"), false);
    companion.reset();
}

TEST_F(SchvalovaniTest, LossOfTheLinkRefuses) {
    startSecured();
    auto answer = askFor("x");
    phone.deliver({RelayMessage::PeerOnline{false}});
    executor.runUntilIdle();
    EXPECT_EQ(*answer, false);
}

TEST_F(SchvalovaniTest, ANewConnectionRefuses) {
    startSecured();
    auto answer = askFor("x");
    sockets.layOut();
    companion->pripojit();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připojuji…");
    EXPECT_EQ(*answer, false);
}

TEST_F(SchvalovaniTest, ALinkThatGivesUpRefuses) {
    startPaired();
    phone.deliver({RelayMessage::Challenge{toBytes("nonce"), ProtocolVersion::current}});
    auto answer = askFor("x");
    EXPECT_FALSE(*answer);
    phone.deliver({RelayMessage::Failure{RelayFailure::unknownPair, "Neznám."}});
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Spojení přerušeno — Zařízení není spárované. Neznám.");
    EXPECT_EQ(*answer, false);
}

TEST_F(SchvalovaniTest, ARevokedPairRefuses) {
    startSecured();
    auto answer = askFor("x");
    phone.deliver({RelayMessage::Failure{RelayFailure::revoked, "Pryč."}});
    executor.runUntilIdle();
    EXPECT_EQ(*answer, false);
}

TEST_F(SchvalovaniTest, ANewSessionLeavesTheQuestionOpen) {
    startSecured();
    auto answer = askFor("x");
    phone.exchangeHellos();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připraven");
    EXPECT_FALSE(*answer);
    EXPECT_TRUE(open());
}

TEST_F(SchvalovaniTest, SleepRefusesAlsoWithoutALink) {
    start();
    auto answer = askFor("x");
    sleep.fallAsleep();
    executor.runUntilIdle();
    EXPECT_EQ(*answer, false);
}

TEST_F(SchvalovaniTest, ADecisionWithNothingOpenDoesNothing) {
    start();
    companion->schvalovani().rozhodnout(true);
    companion->schvalovani().vyresit("x", true);
    EXPECT_FALSE(open());
}

} // namespace
} // namespace morvex
