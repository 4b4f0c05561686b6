#include "app/voice/MacHotkey.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(MacHotkey, TheDefaultIsTheFunctionKey) {
    EXPECT_EQ(encode(MacHotkey{}), R"({"kind":"function","keyCode":0,"modifiers":0,"keyLabel":"fn"})");
    EXPECT_EQ(MacHotkey{}.displayText(), "fn");
}

TEST(MacHotkey, ShowsTheModifiersInTheirOrderDirectlyBeforeTheKey) {
    using H = MacHotkey;
    EXPECT_EQ((H{H::Kind::key, 40, H::control | H::option, "K"}.displayText()), "⌃⌥K");
    EXPECT_EQ((H{H::Kind::key, 49, H::command | H::shift | H::option | H::control, "Space"}.displayText()),
              "⌃⌥⇧⌘Space");
    EXPECT_EQ((H{H::Kind::key, 40, 0, "K"}.displayText()), "K");
}

TEST(MacHotkey, ReadsWhatItWrote) {
    MacHotkey hotkey{MacHotkey::Kind::key, 65535, MacHotkey::command, "Ž"};
    EXPECT_EQ(decode<MacHotkey>(encode(hotkey)).value(), hotkey);
    EXPECT_FALSE(decode<MacHotkey>(R"({"kind":"key","keyCode":65536,"modifiers":0,"keyLabel":"K"})"));
    EXPECT_FALSE(decode<MacHotkey>(R"({"kind":"mouse","keyCode":1,"modifiers":0,"keyLabel":"K"})"));
}

TEST(MacHotkey, NamesARecordedKey) {
    EXPECT_EQ(MacHotkey::label(49, " "), "Space");
    EXPECT_EQ(MacHotkey::label(36, "\r"), "Return");
    EXPECT_EQ(MacHotkey::label(40, "k"), "K");
    EXPECT_EQ(MacHotkey::label(41, "ů"), "Ů");
    EXPECT_EQ(MacHotkey::label(122, ""), "");
}

} // namespace
} // namespace morvex
