#include "app/voice/LanguageInForce.h"

#include "platform/memory/MemoryDefaults.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(LanguageInForce, StaysCzechUntilThePhoneHasSentALanguage) {
    MemoryDefaults defaults;
    EXPECT_EQ(languageInForce(defaults), "cs");
    defaults.set("app.language", std::string("de"));
    defaults.set("app.language.mode", std::string("de"));
    EXPECT_EQ(languageInForce(defaults), "cs");
    defaults.set("app.language.receivedFromPhone", false);
    EXPECT_EQ(languageInForce(defaults), "cs");
}

TEST(LanguageInForce, IsTheKeptCodeFromThenOn) {
    MemoryDefaults defaults;
    defaults.set("app.language.receivedFromPhone", true);
    EXPECT_EQ(languageInForce(defaults), "cs");
    defaults.set("app.language", std::string("de"));
    EXPECT_EQ(languageInForce(defaults), "de");
}

} // namespace
} // namespace morvex
