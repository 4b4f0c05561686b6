#include "phone/StatusText.h"

#include "shared/wire/Json.h"
#include "tests/phone/PhoneFixture.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

class StatusTextTest : public PhoneFixture {
  protected:
    std::vector<StyledLine> linesAt(const MacStatus& told, Date now) const {
        return statusLines(told, now, *TimeZone::named("Europe/Prague"));
    }

    static std::string text(const std::vector<StyledLine>& lines) {
        std::string all;
        for (const auto& line : lines) {
            for (const auto& span : line) all += span.text;
            all += "\n";
        }
        return all;
    }
};

TEST_F(StatusTextTest, AlignsTheLabelsAndTellsEverything) {
    EXPECT_EQ(text(linesAt(status(), clock.now() + std::chrono::seconds(3))),
              "Mac        Studovna (Morvex 0.1.0, protokol 1.4)\n"
              "Napájení   ze sítě\n"
              "Složky     Plocha, Projekty\n"
              "Pošta      nedostupná\n"
              "Codex      1.2\n"
              "Claude     Vypnuto\n"
              "Pracuje    na ničem\n"
              "Nástrojů   2\n"
              "Hlášeno    09:00:00 (před 3 s)\n");
}

TEST_F(StatusTextTest, TellsTheRunningTaskAndWhatTheAgentsLack) {
    auto told = status();
    told.runningTask = RunningTask{"R", {}, "mac.codex.run", clock.now(), "čtu testy"};
    told.codex.source = "/usr/bin/codex";
    told.codex.problem = Sentence("není přihlášený");
    told.claude.problem.reset();
    told.allowedFolders.clear();
    auto shown = text(linesAt(told, clock.now()));
    EXPECT_NE(shown.find("Codex      1.2 (/usr/bin/codex) — není přihlášený\n"), std::string::npos);
    EXPECT_NE(shown.find("Claude     není nainstalovaný\n"), std::string::npos);
    EXPECT_NE(shown.find("Pracuje    mac.codex.run od 09:00:00 — čtu testy\n"), std::string::npos);
    EXPECT_NE(shown.find("Složky     žádné\n"), std::string::npos);
}

TEST_F(StatusTextTest, AReportFromTheFutureIsNotOlderThanNow) {
    auto shown = text(linesAt(status(), clock.now() - std::chrono::hours(1)));
    EXPECT_NE(shown.find("(před 0 s)"), std::string::npos);
}

TEST_F(StatusTextTest, ToolsStandInColumnsAlsoWithAccents) {
    EXPECT_EQ(text(toolLines(status().tools)), "NÁSTROJ        RIZIKO             POPIS\n"
                                               "mac.status     jen čte            Řekne, co Mac umí.\n"
                                               "mac.mail.send  mění nebo odesílá  Odešle mail.\n");
}

TEST_F(StatusTextTest, ToolsAsJsonAreTheWholeDescriptors) {
    auto tools = status().tools;
    EXPECT_EQ(toolsJson(tools), "[" + encode(tools[0]) + "," + encode(tools[1]) + "]");
    EXPECT_EQ(toolsJson({}), "[]");
}

} // namespace
} // namespace morvex
