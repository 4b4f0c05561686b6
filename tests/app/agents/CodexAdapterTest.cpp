#include "app/agents/CodexAdapter.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using testing::ElementsAre;

ZpravaAgenta progress(std::string text) {
    ZpravaAgenta zprava;
    zprava.prubeh = std::move(text);
    return zprava;
}

ZpravaAgenta session(std::string id) {
    ZpravaAgenta zprava;
    zprava.relace = std::move(id);
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

const CodexAdapter codex;

struct Case {
    std::string line;
    std::optional<ZpravaAgenta> expected;
};

void check(const std::vector<Case>& cases) {
    for (const auto& [line, expected] : cases) EXPECT_EQ(codex.precti(line), expected) << line;
}

TEST(CodexAdapter, SaysWhatItIs) {
    EXPECT_EQ(codex.id(), "codex");
    EXPECT_THAT(codex.jmenaBinarky(), ElementsAre("codex", "codex-cli"));
    EXPECT_EQ(codex.napoveda(), "Nainstaluj: npm i -g @openai/codex (nebo brew install codex). Codex ve "
                                "webovém ChatGPT ani rozšíření "
                                "do editoru žádné CLI neinstalují.");
    EXPECT_FALSE(codex.loginCheck());
}

TEST(CodexAdapter, BuildsTheCommandLineOfANewSession) {
    EXPECT_THAT(codex.argumenty("Oprav \"to\".\n", "/work folder", {}),
                ElementsAre("exec", "--json", "--cd", "/work folder", "--skip-git-repo-check", "--sandbox",
                            "workspace-write", "Oprav \"to\".\n"));
}

TEST(CodexAdapter, ResumesASessionJustBeforeTheInstruction) {
    EXPECT_THAT(codex.argumenty("Dál.", "/work", "t1"),
                ElementsAre("exec", "--json", "--cd", "/work", "--skip-git-repo-check", "--sandbox",
                            "workspace-write", "resume", "t1", "Dál."));
}

TEST(CodexAdapter, ALineThatIsNoObjectSaysNothing) {
    check({{"", {}},
           {"Reading prompt from stdin...", {}},
           {R"("error")", {}},
           {R"([{"type":"error"}])", {}},
           {"null", {}},
           {R"({"type":"error")", {}},
           {R"({"type":"error"} trailing)", {}},
           {"{\"type\":\"error\xff\"}", {}}});
}

TEST(CodexAdapter, ReadsEachTypeOfEvent) {
    check({{R"({"type":"thread.started"})", progress("Relace navázána.")},
           {R"({"type":"session_configured"})", progress("Relace navázána.")},
           {R"({"type":"turn.completed","text":"a","last_agent_message":"b"})", final("a")},
           {R"({"type":"turn.completed","last_agent_message":"b"})", final("b")},
           {R"({"type":"turn.completed","text":7,"last_agent_message":"b"})", final("b")},
           {R"({"type":"turn.completed"})", {}},
           {R"({"type":"task_complete","text":"a"})", final("a")},
           {R"({"type":"task_complete","last_agent_message":"b"})", final("b")},
           {R"({"type":"error","message":"m"})", error("m")},
           {R"({"type":"error"})", error("Codex skončil chybou.")},
           {R"({"type":"error","message":""})", error("")},
           {R"({"type":"stream_error","message":""})", error("")},
           {R"({"type":"error","message":{"text":"m"}})", error("Codex skončil chybou.")},
           {R"({"type":"stream_error","message":"m"})", error("m")},
           {R"({"type":"stream_error"})", error("Codex skončil chybou.")},
           {R"({"type":"turn.started"})", {}},
           {R"({"type":7,"message":"m"})", {}},
           {R"({"message":"m"})", {}},
           {"{}", {}}});
}

TEST(CodexAdapter, ReadsEachItemInEachOfItsEvents) {
    for (const char* type : {"item.started", "item.updated", "item.completed"}) {
        auto event = [type](const std::string& item) {
            return R"({"type":")" + std::string(type) + R"(","item":)" + item + "}";
        };
        check({{event(R"({"type":"command_execution","command":"ls -l"})"), progress("Spouštím: ls -l")},
               {event(R"({"type":"command_execution","command":""})"), progress("Spouštím příkaz.")},
               {event(R"({"type":"command_execution","command":["ls"]})"), progress("Spouštím příkaz.")},
               {event(R"({"type":"command_execution"})"), progress("Spouštím příkaz.")},
               {event(R"({"type":"agent_message","text":"Dívám se."})"), said("Dívám se.")},
               {event(R"({"type":"agent_message"})"), {}},
               {event(R"({"type":"reasoning","text":"hm"})"), {}},
               {event("{}"), {}},
               {event(R"("file_change")"), {}}});
    }
    check({{R"({"type":"item.completed"})", {}}, {R"({"type":"item","item":{"type":"file_change"}})", {}}});
}

TEST(CodexAdapter, NamesTheFirstThreePathsOfAChange) {
    auto changes = [](const std::string& list) {
        return R"({"type":"item.completed","item":{"type":"file_change","changes":)" + list + "}}";
    };
    check({{changes(R"([{"path":"a"},{"path":"b"},{"path":"c"},{"path":"d"},{"path":"e"}])"),
            progress("Upravuji: a, b, c")},
           {changes(R"([{"path":7},{"kind":"add"},{"path":"b"}])"), progress("Upravuji: b")},
           {changes("[]"), progress("Upravuji soubory.")},
           {changes(R"([{"kind":"add"}])"), progress("Upravuji soubory.")},
           {changes(R"([{"path":"a"},"b"])"), progress("Upravuji soubory.")},
           {changes(R"({"path":"a"})"), progress("Upravuji soubory.")},
           {R"({"type":"item.started","item":{"type":"file_change"}})", progress("Upravuji soubory.")}});
}

TEST(CodexAdapter, ShowsACommandUpToACharacter) {
    std::string letters;
    for (int i = 0; i < 500; ++i) letters += "ě";
    auto zprava = codex.precti(R"({"type":"item.started","item":{"type":"command_execution","command":")" +
                               letters + "\"}}");
    ASSERT_TRUE(zprava);
    EXPECT_EQ(zprava->prubeh, "Spouštím: " + letters.substr(0, 160 * std::string("ě").size()));
}

TEST(CodexAdapter, AWrappedEventIsReadFromItsInside) {
    check({{R"({"id":"0","msg":{"type":"error","message":"m"}})", error("m")},
           {R"({"type":"error","msg":{"type":"turn.started"}})", {}},
           {R"({"type":"error","message":"outer","msg":{"message":"inner"}})", error("inner")},
           {R"({"type":"error","message":"outer","msg":{}})", error("Codex skončil chybou.")},
           {R"({"type":"error","message":"outer","msg":"text"})", error("outer")},
           {R"({"msg":{"type":"task_complete","last_agent_message":"b"}})", final("b")},
           {R"({"item":{"type":"agent_message","text":"outer"},"msg":{"type":"item.completed"}})", {}}});
}

TEST(CodexAdapter, TakesTheSessionFromTheFirstPlaceThatHasOne) {
    check({{R"({"thread_id":"a","session_id":"b","msg":{"thread_id":"c","session_id":"d"}})", session("a")},
           {R"({"session_id":"b","msg":{"thread_id":"c","session_id":"d"}})", session("b")},
           {R"({"msg":{"thread_id":"c","session_id":"d"}})", session("c")},
           {R"({"msg":{"session_id":"d"}})", session("d")},
           {R"({"thread_id":7,"session_id":"b"})", session("b")},
           {R"({"id":"e","type":"turn.started"})", {}},
           {R"({"id":"e","msg":{"type":"turn.started"}})", {}}});
    auto started = progress("Relace navázána.");
    started.relace = "e";
    check({{R"({"id":"e","type":"thread.started"})", started},
           {R"({"id":"e","msg":{"type":"thread.started"}})", started},
           {R"({"msg":{"id":"x","type":"thread.started"}})", progress("Relace navázána.")},
           {R"({"id":"x","thread_id":"e","type":"thread.started"})", started}});
}

TEST(CodexAdapter, KnowsTheWordsOfASessionThatIsGone) {
    for (const char* words : {"no such thread", "thread not found", "session not found", "invalid session",
                              "Error: Thread Not Found (t1)", "INVALID SESSION"})
        EXPECT_TRUE(codex.isSessionGone(words)) << words;
    for (const char* words : {"", "not found", "thread  not found", "no conversation found", "sessions"})
        EXPECT_FALSE(codex.isSessionGone(words)) << words;
}

} // namespace
} // namespace morvex
