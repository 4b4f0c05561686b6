#include "app/tools/ToolTable.h"

#include "shared/wire/MacToolName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

Task<ToolOutcome> nothing(ToolCall) {
    co_return ToolOutcome::done({});
}

std::vector<std::string> names(const ToolTable& table) {
    std::vector<std::string> all;
    for (const auto& tool : table.offered()) all.push_back(tool.name);
    return all;
}

TEST(ToolTable, KeepsTheOrderOfTheOfferWhateverWasAddedWhen) {
    ToolTable table;
    auto always = [] { return true; };
    for (auto name : {MacToolName::mailCreateDraft, MacToolName::filesWrite, MacToolName::status})
        table.add(name, always, nothing);
    EXPECT_EQ(names(table),
              (std::vector<std::string>{"mac.status", "mac.files.write", "mac.mail.createDraft"}));
}

TEST(ToolTable, AsksEveryConditionAnewAtEachOffer) {
    ToolTable table;
    bool on = false;
    table.add(MacToolName::filesRead, [&on] { return on; }, nothing);
    EXPECT_TRUE(table.offered().empty());
    EXPECT_NE(table.find("mac.files.read"), nullptr);
    on = true;
    EXPECT_EQ(names(table), std::vector<std::string>{"mac.files.read"});
}

TEST(ToolTable, ANameThatIsUnknownOrAddedTwiceEndsTheProcess) {
    ToolTable table;
    auto always = [] { return true; };
    table.add(MacToolName::status, always, nothing);
    EXPECT_DEATH(table.add(MacToolName::status, always, nothing), "added twice");
    EXPECT_DEATH(table.add("mac.app.open", always, nothing), "unknown");
}

} // namespace
} // namespace morvex
