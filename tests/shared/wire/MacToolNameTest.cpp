#include "shared/wire/MacToolName.h"

#include <gtest/gtest.h>

#include <set>

namespace morvex {
namespace {

TEST(MacToolName, KnowsThirtyNames) {
    const std::set<std::string_view> names{MacToolName::allNames.begin(), MacToolName::allNames.end()};
    EXPECT_EQ(names.size(), 30u);
    EXPECT_TRUE(names.contains("mac.terminal.cancel"));
    EXPECT_TRUE(names.contains("mac.app.open"));
}

TEST(MacToolName, GoesToAFunctionNameAndBack) {
    EXPECT_EQ(MacToolName::functionName("mac.files.read"), "mac_files_read");
    EXPECT_EQ(MacToolName::functionName("mac.mail.createDraft"), "mac_mail_createDraft");
    for (const auto name : MacToolName::allNames)
        EXPECT_EQ(MacToolName::toolName(MacToolName::functionName(name)), name);
}

TEST(MacToolName, HasNoToolForAnotherText) {
    for (const auto* text : {"mac_unknown_tool", "mac.status", "MAC_STATUS", "mac_mail_createdraft", ""})
        EXPECT_EQ(MacToolName::toolName(text), std::nullopt) << text;
}

} // namespace
} // namespace morvex
