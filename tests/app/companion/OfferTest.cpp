#include "tests/app/companion/AgentHarness.h"

namespace morvex {
namespace {

using Names = std::vector<std::string>;

class OfferTest : public AgentHarness {
  protected:
    Names offered() {
        Names names;
        for (auto& tool : companion->nastroje().nabizeneNastroje()) names.push_back(std::move(tool.name));
        return names;
    }

    void turnOn(Integration integration) {
        EXPECT_TRUE(ended(companion->integrations().zapnout(integration)).has_value());
    }
};

TEST_F(OfferTest, EverySwitchTakesItsOwnToolsOffAndNoOthers) {
    struct Row {
        std::vector<Integration> off;
        Names missing;
    };

    using enum Integration;
    const std::vector<Row> rows{
        {{calendar}, {}},
        {{reminders}, {}},
        {{contacts}, {}},
        {{notes}, {"mac.notes.search", "mac.notes.create", "mac.notes.update", "mac.notes.delete"}},
        {{customApps}, {}},
        {{appleMail}, {}},
        {{smtp}, {}},
        {{codex}, {"mac.codex.run", "mac.codex.cancel"}},
        {{claude}, {"mac.claude.run", "mac.claude.cancel"}},
        {{codex, claude},
         {"mac.codex.run", "mac.codex.cancel", "mac.claude.run", "mac.claude.cancel", "mac.agent.rename"}},
        {{files}, {"mac.files.search", "mac.files.read", "mac.files.write"}},
        {{terminal}, {"mac.terminal.run"}},
        {{webSearch}, {}},
    };
    startWithFolder();
    const auto all = offered();
    EXPECT_EQ(all.size(), 14U);
    for (const auto& [off, missing] : rows) {
        auto left = all;
        for (const auto& name : missing) EXPECT_EQ(std::erase(left, name), 1U) << name;
        for (auto integration : off) companion->integrations().vypnout(integration);
        EXPECT_EQ(offered(), left) << testing::PrintToString(missing);
        for (auto integration : off) turnOn(integration);
        EXPECT_EQ(offered(), all) << testing::PrintToString(missing);
    }
}

} // namespace
} // namespace morvex
