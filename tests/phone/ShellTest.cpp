#include "phone/Shell.h"

#include "tests/phone/PhoneFixture.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class ShellTest : public PhoneFixture {
  protected:
    void type(std::string line) {
        keyboard.type(std::move(line));
        run();
    }

    /// The call that the last line made; then the Mac answers it.
    MacPayload answerCall(bool isOk, std::string json) {
        auto received = mac.take();
        if (received.size() != 1) return {};
        send({MacPayload::ToolResult{isOk, std::move(json)}}, received[0].requestID);
        return received[0].payload;
    }
};

TEST(SplitLine, TakesTheFirstWordOrWhatIsQuoted) {
    const std::vector<std::pair<std::string, SplitLine>> rows{
        {"", {"", ""}},
        {"  ", {"", ""}},
        {"quit", {"quit", ""}},
        {"  call  mac.status {\"a\": 1} ", {"call", "mac.status {\"a\": 1}"}},
        {"\"a b.txt\" text", {"a b.txt", "text"}},
        {"\"a b.txt", {"\"a", "b.txt"}},
        {"a\tb", {"a", "b"}},
    };
    for (const auto& [line, split] : rows) EXPECT_EQ(SplitLine::of(line), split) << line;
}

TEST(SplitLine, GivesAllWordsByTheSameRule) {
    EXPECT_EQ(SplitLine::words(" place \"U řeky\"  Krátká "),
              (std::vector<std::string>{"place", "U řeky", "Krátká"}));
    EXPECT_EQ(SplitLine::words("a \"\" b"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(SplitLine::words("a \"\""), (std::vector<std::string>{"a", ""}))
        << "an empty word may be the last";
    EXPECT_EQ(SplitLine::words("\"a b\"c \"d"), (std::vector<std::string>{"a b", "c", "\"d"}));
    EXPECT_TRUE(SplitLine::words("  ").empty());
}

TEST_F(ShellTest, IsTheDefaultOnATerminalOnly) {
    start({});
    EXPECT_EQ(ended, ExitCode::usage);
    keyboard.interactive = true;
    startInSession({});
    EXPECT_THAT(err.str(), HasSubstr("morvex> "));
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(ShellTest, NewsFromTheMacBeforeALineLoseNoLaterLine) {
    startInSession({"shell"});
    inbox.push(SecureLink::Zprava{{MacPayload::Status{status()}}, "status"});
    keyboard.type("read a.txt");
    keyboard.type("search b");
    run();
    answerCall(true, R"({"content":"ahoj"})");
    run();
    EXPECT_EQ(answerCall(true, R"({"count":0})"),
              (MacPayload{MacPayload::ToolCall{"mac.files.search", R"({"pattern":"b"})"}}));
}

TEST_F(ShellTest, AQuestionOvertakenByTheResultLosesNoLine) {
    startInSession({"shell", "--approve", "ask"});
    keyboard.type("call mac.mail.send");
    run();
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    keyboard.type("read a.txt");
    keyboard.type("search b");
    inbox.push(SecureLink::Zprava{{MacPayload::Approval{approval("mac.notes.create")}}, "A1"});
    inbox.push(SecureLink::Zprava{{MacPayload::ToolResult{true, "{}"}}, received[0].requestID});
    run();
    EXPECT_EQ(answerCall(true, "{}"),
              (MacPayload{MacPayload::ToolCall{"mac.files.read", R"({"path":"a.txt"})"}}));
    EXPECT_EQ(answerCall(true, "{}"),
              (MacPayload{MacPayload::ToolCall{"mac.files.search", R"({"pattern":"b"})"}}));
}

TEST_F(ShellTest, RunsAScriptOfLinesInOrder) {
    startInSession({"shell"});
    type("# komentář");
    type("");
    type("read a b.txt");
    EXPECT_EQ(answerCall(true, R"({"content":"ahoj"})"),
              (MacPayload{MacPayload::ToolCall{"mac.files.read", R"({"path":"a b.txt"})"}}));
    type("search zprava");
    EXPECT_EQ(answerCall(true, R"({"count":0})"),
              (MacPayload{MacPayload::ToolCall{"mac.files.search", R"({"pattern":"zprava"})"}}));
    type("write \"a b.txt\" první věta");
    EXPECT_EQ(answerCall(true, R"({"written":"a b.txt"})"),
              (MacPayload{
                  MacPayload::ToolCall{"mac.files.write", R"({"path":"a b.txt","content":"první věta"})"}}));
    type("call mac.status");
    EXPECT_EQ(answerCall(true, "{}"), (MacPayload{MacPayload::ToolCall{"mac.status", "{}"}}));
    type("call mac.notes.search {\"limit\": 3}");
    EXPECT_EQ(answerCall(true, "{}"),
              (MacPayload{MacPayload::ToolCall{"mac.notes.search", R"({"limit":3})"}}));
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(out.str(), "content: ahoj\ncount: 0\nwritten: a b.txt\n");
    EXPECT_EQ(err.str(), "");
}

TEST_F(ShellTest, StatusAndToolsAreTheOnesOfTheCommands) {
    startInSession({"shell"});
    type("status");
    type("tools");
    EXPECT_THAT(out.str(), HasSubstr("Mac        Studovna"));
    EXPECT_THAT(out.str(), HasSubstr("mac.mail.send  mění"));
}

TEST_F(ShellTest, QuitEndsAndTheRestIsNotRead) {
    startInSession({"shell"});
    keyboard.type("quit");
    keyboard.type("call mac.status");
    run();
    EXPECT_EQ(ended, ExitCode::done);
    EXPECT_EQ(out.str(), "");
}

TEST_F(ShellTest, AScriptGoesOnAfterAFailureAndEndsWithTheFirst) {
    startInSession({"shell"});
    type("tanec");
    type("call mac.files.read");
    answerCall(false, R"({"error":"Chybí cesta."})");
    type("help");
    type("read");
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::usage);
    EXPECT_EQ(err.str(), "morvex-phone: Příkaz 'tanec' neznám. Zkus help.\n"
                         "morvex-phone: Chybí cesta.\n"
                         "morvex-phone: Použití: read PATH\n"
                         "morvex-phone: Skript skončil s chybou.\n");
    EXPECT_THAT(out.str(), HasSubstr("write PATH TEXT"));
}

TEST_F(ShellTest, AScriptEndsWhenTheMacIsGone) {
    startInSession({"shell", "--timeout", "5"});
    keyboard.type("call mac.status");
    keyboard.type("call mac.status");
    run();
    pass(5s);
    EXPECT_EQ(ended, ExitCode::macUnreachable);
    EXPECT_EQ(mac.take().size(), 1U);
}

TEST_F(ShellTest, APersonsFailuresDoNotCount) {
    keyboard.interactive = true;
    startInSession({"shell"});
    type("tanec");
    keyboard.end();
    run();
    EXPECT_EQ(ended, ExitCode::done);
}

TEST_F(ShellTest, ThePromptComesBackBehindWhatTheMacSends) {
    keyboard.interactive = true;
    startInSession({"shell"});
    err.str("");
    send({MacPayload::ToolProgress{"čtu"}}, "R0");
    EXPECT_TRUE(err.str().starts_with("\n"));
    EXPECT_TRUE(err.str().ends_with("průběh: čtu\nmorvex> "));
}

TEST_F(ShellTest, ARequestAtThePromptIsAnsweredThereOrByTheCommand) {
    keyboard.interactive = true;
    startInSession({"shell"});
    send({MacPayload::Approval{approval("mac.notes.create")}}, "A1");
    EXPECT_THAT(err.str(), HasSubstr("Potvrdit? [a/n] "));
    type("ano");
    auto received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::ApprovalDecision{"A1", true, std::nullopt}}));

    send({MacPayload::Approval{approval("mac.notes.create")}}, "A1");
    type("approve no");
    received = mac.take();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].payload, (MacPayload{MacPayload::ApprovalDecision{"A1", false, std::nullopt}}));
    type("approve no");
    EXPECT_THAT(err.str(), HasSubstr("Žádná žádost o potvrzení nečeká."));
}

TEST_F(ShellTest, AfterACallWhatItsToolAsksIsAnsweredHereAgain) {
    keyboard.interactive = true;
    startInSession({"shell"});
    type("call mac.mail.send");
    answerCall(false, R"({"error":"Mac to neumí."})");
    send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
    EXPECT_THAT(err.str(), HasSubstr("Potvrdit? [a/n] "));
}

TEST_F(ShellTest, ALineOfAScriptIsNoAnswerUnlessItSaysSo) {
    startInSession({"shell"});
    keyboard.type("call mac.mail.send");
    keyboard.type("approve yes");
    run();
    send({MacPayload::Approval{approval("mac.mail.send")}}, "A1");
    auto payload = answerCall(false, R"({"error":"Neodesláno — nepotvrzeno."})");
    EXPECT_TRUE(payload.as<MacPayload::ToolCall>());
    EXPECT_TRUE(mac.take().empty());
    EXPECT_THAT(err.str(), HasSubstr("Žádná žádost o potvrzení nečeká."));
}

TEST_F(ShellTest, CtrlCEndsThePrompt) {
    startInSession({"shell"});
    interruption.request_stop();
    run();
    EXPECT_EQ(ended, ExitCode::done);
}

} // namespace
} // namespace morvex
