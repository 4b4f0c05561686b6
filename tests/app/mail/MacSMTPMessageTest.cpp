#include "app/mail/MacSMTPMessage.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(MacSMTPMessageID, HasThreePiecesAndANumber) {
    EXPECT_EQ((MacSMTPMessageID{"A-1", 7}.text()), "smtp:A-1:7");
    EXPECT_EQ(MacSMTPMessageID::parse("smtp:A-1:7"), (MacSMTPMessageID{"A-1", 7}));
    EXPECT_EQ(MacSMTPMessageID::parse("smtp::4294967295"), (MacSMTPMessageID{"", 4294967295U}));
    for (const char* text : {"", "smtp:", "smtp:a", "smtp:a:", "smtp:a:0", "smtp:a:-1", "smtp:a:+1",
                             "smtp:a: 1", "smtp:a:1 ", "smtp:a:1x", "smtp:a:0x1", "smtp:a:4294967296",
                             "smtp:a:b:1", "apple:a:1", "SMTP:a:1", "smtp:a:1\r\nA0004 DELETE INBOX"})
        EXPECT_EQ(MacSMTPMessageID::parse(text), std::nullopt) << text;
}

} // namespace
} // namespace morvex
