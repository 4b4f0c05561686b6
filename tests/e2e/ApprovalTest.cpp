#include "tests/e2e/EndToEnd.h"
#include "tests/support/RealCompanion.h"

#include <csignal>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// The phone is another process; the companion runs in this one, because its interface is called directly.
class ApprovalTest : public EndToEnd {
  protected:
    ApprovalTest() {
        auto paired = phone({"--yes", "pair", mac.qr()});
        EXPECT_EQ(paired.code, 0) << paired.output;
        mac.agree();
    }

    /// A connected phone that answers requests according to these options.
    std::unique_ptr<Program> connect(std::vector<std::string> options) {
        options.insert(options.begin(), {"--data", (temporary.path() / "phone").string()});
        options.emplace_back("shell");
        auto program = std::make_unique<Program>("morvex-phone", options, environment("phone"));
        program->type("status");
        program->waitForNextLine("Počítač");
        return program;
    }

    RealCompanion mac{relayAddress};
};

TEST_F(ApprovalTest, ThePhoneShowsTheRequestAndItsUserDecides) {
    for (bool yes : {true, false}) {
        auto device = connect({"--approve", yes ? "yes" : "no"});
        auto answer = mac.ask("Odeslat mail", "Komu: a@example.org");
        EXPECT_EQ(answer.get(), yes);
        device->waitForLine("Mac žádá o potvrzení: Odeslat mail");
        device->waitForLine("Komu: a@example.org");
        device->type("quit");
        EXPECT_EQ(device->wait(), 0) << device->output();
    }
}

TEST_F(ApprovalTest, TheRequestThatThePhoneShowsMayBeDecidedAtTheComputer) {
    auto device = connect({});
    for (bool decision : {true, false}) {
        auto answer = mac.ask("Odeslat mail", "Komu: a@example.org");
        device->waitForNextLine("Mac žádá o potvrzení: Odeslat mail");
        mac.on([&] { mac.companion().schvalovani().rozhodnout(decision); });
        EXPECT_EQ(answer.get(), decision);
    }
}

TEST_F(ApprovalTest, WithoutADecisionTheRequestLapsesAfter120SecondsWhileTheLinkLives) {
    auto device = connect({});
    auto answer = mac.ask("Odeslat mail", "Komu: a@example.org");
    device->waitForNextLine("Mac žádá o potvrzení: Odeslat mail");
    for (auto passed = 0s; passed < 115s; passed += 5s) {
        mac.pass(5s);
        device->type("call mac.status");
        device->waitForNextLine("Počítač");
    }
    EXPECT_TRUE(mac.on([&] { return mac.companion().schvalovani().zadost().value().has_value(); }));
    mac.pass(5s);
    EXPECT_FALSE(answer.get());
    EXPECT_FALSE(mac.on([&] { return mac.companion().schvalovani().zadost().value().has_value(); }));
    device->type("call mac.status");
    device->waitForNextLine("Počítač");
}

TEST_F(ApprovalTest, ALossOfTheLinkRefuses) {
    auto device = connect({});
    auto answer = mac.ask("Odeslat mail", "Komu: a@example.org");
    device->waitForNextLine("Mac žádá o potvrzení: Odeslat mail");
    device->signal(SIGKILL);
    EXPECT_FALSE(answer.get());
}

} // namespace
} // namespace morvex
