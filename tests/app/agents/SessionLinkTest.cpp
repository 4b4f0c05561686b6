#include "app/agents/SessionLink.h"

#include "tests/app/agents/HistoryFixture.h"

namespace morvex {
namespace {

class SessionLinkTest : public HistoryFixture {
  protected:
    SessionLinkTest() { load(); }

    UkolAgenta withSession(const std::string& nastroj, const std::string& relace, const std::string& slozka) {
        auto id = begin(nastroj, "x", slozka).workItemID;
        historie->nastavRelaci(id, relace);
        return historie->ukol(id).value();
    }
};

TEST_F(SessionLinkTest, EachAgentHasItsAddress) {
    historie->otevritRelaci(withSession("claude-code", "5f-1", "/home/jana/Můj projekt&co=1"));
    historie->otevritRelaci(withSession("codex", "a/b?c#d%", "/p"));
    EXPECT_EQ(opener.opened, (std::vector<std::string>{
                                 "claude://resume?session=5f-1&cwd=/home/jana/M%C5%AFj%20projekt%26co%3D1",
                                 "codex://threads/a%2Fb%3Fc%23d%25",
                             }));
    EXPECT_EQ(trouble(), "none");
}

TEST_F(SessionLinkTest, WithoutASessionNothingIsOpened) {
    historie->otevritRelaci(begin("codex", "x"));
    EXPECT_EQ(trouble(), "Tento úkol ještě nemá relaci, ve které by šlo pokračovat.");
    historie->otevritRelaci(withSession("codex", "", "/p"));
    EXPECT_EQ(trouble(), "Tento úkol ještě nemá relaci, ve které by šlo pokračovat.");
    EXPECT_TRUE(opener.opened.empty());
}

TEST_F(SessionLinkTest, TellsWhichApplicationIsMissing) {
    opener.succeeds = false;
    historie->otevritRelaci(withSession("claude-code", "r", "/p"));
    EXPECT_EQ(trouble(),
              "Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aktuální aplikace Claude.");
    historie->otevritRelaci(withSession("codex", "r", "/p"));
    EXPECT_EQ(trouble(), "Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex.");
}

TEST_F(SessionLinkTest, AnAgentWithoutAnApplicationHasNone) {
    EXPECT_FALSE(SessionLink::of(withSession("jiný", "r", "/p")));
}

} // namespace
} // namespace morvex
