#include "tests/app/console/ConsoleFixture.h"

namespace morvex {
namespace {

/// A console on which approvals are asked.
class ConsoleApprovalsTest : public ConsoleFixture {
  protected:
    void ask(const std::string& title) {
        answers.push_back(std::make_shared<std::optional<bool>>());
        executor.start(asking(companion->schvalovani(), title, answers.back()));
        executor.runUntilIdle();
    }

    static Task<void> asking(Schvalovani& approvals, std::string title,
                             std::shared_ptr<std::optional<bool>> into) {
        into->emplace(co_await approvals.pozadat("mac.mail.send", std::move(title), "Mám?", "Komu: Janě"));
    }

    std::vector<std::string> question(const std::string& title) const {
        return {"Čeká na potvrzení: " + title, "  | Komu: Janě", "Odpověz „potvrdit“ nebo „zamitnout“."};
    }

    std::vector<std::shared_ptr<std::optional<bool>>> answers;
};

TEST_F(ConsoleApprovalsTest, ADecisionIsForTheRequestThatWasShown) {
    startShell();
    for (const auto& [decision, isApproved] : {std::pair{"potvrdit", true}, {"zamitnout", false}}) {
        ask("První");
        companion->schvalovani().vyresit(false);
        ask("Druhá");
        auto told = question("Druhá");
        told.insert(told.begin(), "Mezitím se ptám na něco jiného.");
        // Typed before anybody could read of the second request.
        EXPECT_EQ(type(decision), told);
        EXPECT_FALSE(answers.back()->has_value());
        EXPECT_EQ(type(decision), std::vector<std::string>{"Nic nečeká na potvrzení."});
        EXPECT_EQ(*answers.back(), isApproved);
    }
}

TEST_F(ConsoleApprovalsTest, WhoeverTypedALineHasSeenWhatStoodBefore) {
    startShell();
    ask("První");
    companion->schvalovani().vyresit(false);
    ask("Druhá");
    type("ulohy");
    type("zamitnout");
    EXPECT_EQ(*answers[1], false);
    type("ulohy");
    ask("Třetí");
    type("potvrdit");
    EXPECT_EQ(*answers[2], true);
}

TEST_F(ConsoleApprovalsTest, ShowsAnApprovalAndTakesTheDecision) {
    startShell();
    auto answer = std::make_shared<std::optional<bool>>();
    auto ask = [](Schvalovani& approvals, std::shared_ptr<std::optional<bool>> into) -> Task<void> {
        into->emplace(co_await approvals.pozadat("mac.mail.send", "Odeslat mail", "Mám?",
                                                 "celý text\nČíslo k porovnání: 123 456"));
    };
    executor.start(ask(companion->schvalovani(), answer));
    executor.runUntilIdle();
    EXPECT_TRUE(hasLine(lines, "Čeká na potvrzení: Odeslat mail"));
    EXPECT_TRUE(hasLine(lines, "  | celý text\n  | Číslo k porovnání: 123 456"));
    type("zamitnout");
    EXPECT_EQ(*answer, false);
}

} // namespace
} // namespace morvex
