#include "app/agents/ClaudeCodeAdapter.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using testing::ElementsAre;

const std::string failed = "Claude Code skončil chybou.";
const std::string loginFailed =
    "Přihlášení Claude Code selhalo. V Terminálu spusť `claude auth login` a potom v "
    "aplikaci klikni na Zjistit znovu.";

ZpravaAgenta session(std::string id) {
    ZpravaAgenta zprava;
    zprava.relace = std::move(id);
    return zprava;
}

ZpravaAgenta progress(std::string text) {
    ZpravaAgenta zprava;
    zprava.prubeh = std::move(text);
    return zprava;
}

ZpravaAgenta said(std::string text) {
    ZpravaAgenta zprava;
    zprava.text = std::move(text);
    return zprava;
}

ZpravaAgenta final(std::string text) {
    ZpravaAgenta zprava;
    zprava.zaver = std::move(text);
    return zprava;
}

ZpravaAgenta error(std::string text) {
    ZpravaAgenta zprava;
    zprava.chyba = Sentence(std::move(text));
    return zprava;
}

const ClaudeCodeAdapter claude;

struct Case {
    std::string line;
    std::optional<ZpravaAgenta> expected;
};

void check(const std::vector<Case>& cases) {
    for (const auto& [line, expected] : cases) EXPECT_EQ(claude.precti(line), expected) << line;
}

TEST(ClaudeCodeAdapter, SaysWhatItIs) {
    EXPECT_EQ(claude.id(), "claude-code");
    EXPECT_THAT(claude.jmenaBinarky(), ElementsAre("claude", "claude-code"));
    EXPECT_EQ(claude.napoveda(), "Nainstaluj: npm i -g @anthropic-ai/claude-code");
}

TEST(ClaudeCodeAdapter, BuildsTheCommandLineOfANewSessionWithoutTheFolder) {
    EXPECT_THAT(claude.argumenty("Oprav to.", "/work", {}),
                ElementsAre("-p", "Oprav to.", "--output-format", "stream-json", "--verbose",
                            "--permission-mode", "acceptEdits", "--allowedTools",
                            "Read,Grep,Glob,LS,NotebookRead,NotebookEdit,Edit,Write,WebSearch,WebFetch"));
}

TEST(ClaudeCodeAdapter, ResumesASessionBeforeTheRights) {
    EXPECT_THAT(claude.argumenty("Dál.", "/work", "s1"),
                ElementsAre("-p", "Dál.", "--output-format", "stream-json", "--verbose", "--resume", "s1",
                            "--permission-mode", "acceptEdits", "--allowedTools",
                            "Read,Grep,Glob,LS,NotebookRead,NotebookEdit,Edit,Write,WebSearch,WebFetch"));
}

TEST(ClaudeCodeAdapter, ALineThatIsNoObjectSaysNothing) {
    check({{"", {}},
           {"error", {}},
           {R"("unauthorized")", {}},
           {R"([{"type":"error"}])", {}},
           {R"({"type":"error")", {}},
           {R"({"type":"error"}{})", {}}});
}

TEST(ClaudeCodeAdapter, ReadsEachTypeOfEvent) {
    check({{R"({"type":"system","subtype":"init"})", progress("Relace navázána.")},
           {R"({"type":"system","subtype":"status","session_id":"s"})", session("s")},
           {R"({"type":"system","error":"unauthorized"})", {}},
           {R"({"type":"system"})", {}},
           {R"({"type":"result","result":"Hotovo."})", final("Hotovo.")},
           {R"({"type":"error","error":"e"})", error("e")},
           {R"({"type":"stream_error","error":"e"})", error("e")},
           {R"({"type":"error"})", error(failed)},
           {R"({"type":"stream_error","error":""})", error(failed)},
           {R"({"type":"user","session_id":"s"})", session("s")},
           {R"({"type":"user"})", {}},
           {R"({"session_id":7})", {}},
           {"{}", {}}});
}

TEST(ClaudeCodeAdapter, EveryEventMayTellTheSession) {
    for (const char* type : {"system", "assistant", "result", "error", "stream_error", "user", "other"}) {
        auto zprava = claude.precti(R"({"session_id":"s","type":")" + std::string(type) + "\"}");
        ASSERT_TRUE(zprava) << type;
        EXPECT_EQ(zprava->relace, "s") << type;
    }
}

TEST(ClaudeCodeAdapter, ReadsTheBlocksOfTheAssistant) {
    auto content = [](const std::string& blocks) {
        return R"({"type":"assistant","message":{"content":)" + blocks + "}}";
    };
    auto both = said("a");
    both.prubeh = "Používám nástroj Read.";
    check(
        {{content(R"([{"type":"text","text":"a"},{"type":"text","text":"b"}])"), said("a\nb")},
         {content(R"([{"type":"text"},{"type":"text","text":7},{"type":"text","text":"b"}])"), said("b")},
         {content(
              R"([{"type":"tool_use","name":"Read"},{"type":"text","text":"a"},{"type":"tool_use","name":"Edit"}])"),
          both},
         {content(R"([{"type":"tool_use"},{"type":"tool_use","name":"Edit"}])"),
          progress("Používám nástroj Edit.")},
         {content(R"([{"type":"thinking","text":"hm"}])"), {}},
         {content(R"([{"type":"text","text":"a"},"b"])"), {}},
         {content(R"("a")"), {}},
         {content("[]"), {}},
         {R"({"type":"assistant","message":"unauthorized"})", {}},
         {R"({"type":"assistant"})", {}}});
}

TEST(ClaudeCodeAdapter, AResultFailsByItsFlagOrItsSubtype) {
    check(
        {{R"({"type":"result","subtype":"success","is_error":false,"result":"a"})", final("a")},
         {R"({"type":"result","is_error":true,"result":"a"})", error("a")},
         {R"({"type":"result","subtype":"error_during_execution","result":"a"})", error("a")},
         {R"({"type":"result","subtype":"error_during_execution","is_error":false,"error":"e"})", error("e")},
         {R"({"type":"result","is_error":"true","result":"a"})", final("a")},
         {R"({"type":"result","is_error":1,"result":"a"})", final("a")},
         {R"({"type":"result","result":"a","error":"e"})", final("a")},
         {R"({"type":"result","result":7,"error":"e"})", final("e")},
         {R"({"type":"result"})", final("")},
         {R"({"type":"result","is_error":true})", error(failed)},
         {R"({"type":"result","is_error":true,"result":"","error":"e"})", error(failed)}});
}

TEST(ClaudeCodeAdapter, SearchesTheErrorTextInOrder) {
    check({{R"({"type":"error","error":"1","message":"4","result":"6"})", error("1")},
           {R"({"type":"error","error":{"message":"2","detail":"3"},"message":"4"})", error("2")},
           {R"({"type":"error","error":{"message":"","detail":"3"},"message":"4"})", error("3")},
           {R"({"type":"error","error":{"detail":"3"},"message":"4"})", error("3")},
           {R"({"type":"error","error":"","message":"4","result":"6"})", error("4")},
           {R"({"type":"error","error":{},"message":"4"})", error("4")},
           {R"({"type":"error","message":{"error":"5"},"result":"6"})", error("5")},
           {R"({"type":"error","message":{"error":""},"result":"6"})", error("6")},
           {R"({"type":"error","error":[],"message":7,"result":"6"})", error("6")},
           {R"({"type":"error","error":{"text":"x"},"message":{"text":"x"},"result":7})", error(failed)}});
}

TEST(ClaudeCodeAdapter, ALoginThatFailedIsToldInWordsThatHelp) {
    for (const char* words :
         {"Authentication failed", "Please sign in again.", "not authenticated", "401 Unauthorized"})
        for (const char* type : {"error", "stream_error", "result", "user", "auth_status"}) {
            auto line =
                R"({"is_error":true,"result":")" + std::string(words) + R"(","type":")" + type + "\"}";
            EXPECT_EQ(claude.precti(line), error(loginFailed)) << line;
        }
}

TEST(ClaudeCodeAdapter, InvalidApiKeyIsToldAsItStandsByAResultAndAsALoginByOtherLines) {
    for (const char* words : {"Invalid API key", "expired token"})
        for (const auto& [type, isFiltered] : std::vector<std::pair<std::string, bool>>{
                 {"result", false}, {"error", false}, {"stream_error", false}, {"user", true}, {"", true}}) {
            auto line =
                R"({"is_error":true,"result":")" + std::string(words) + R"(","type":")" + type + "\"}";
            EXPECT_EQ(claude.precti(line), error(isFiltered ? loginFailed : words)) << line;
        }
}

TEST(ClaudeCodeAdapter, OtherErrorsInLinesOfOtherTypesAreNoErrors) {
    check({{R"({"type":"user","session_id":"s","error":"file not found"})", session("s")},
           {R"({"type":"user","error":"file not found"})", {}},
           {R"({"type":"user","message":{"content":"unauthorized"}})", {}}});
}

TEST(ClaudeCodeAdapter, KnowsTheWordsOfASessionThatIsGone) {
    for (const char* words : {"no conversation found", "session not found", "could not find session",
                              "invalid session", "No conversation found with session ID: s1"})
        EXPECT_TRUE(claude.isSessionGone(words)) << words;
    for (const char* words : {"", "thread not found", "no such thread", "conversation"})
        EXPECT_FALSE(claude.isSessionGone(words)) << words;
}

} // namespace
} // namespace morvex
