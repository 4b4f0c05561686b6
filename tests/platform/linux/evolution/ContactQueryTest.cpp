#include "platform/linux/evolution/ContactQuery.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

std::string words(int count) {
    std::string text;
    for (int each = 0; each < count; ++each) text += "a ";
    return text;
}

TEST(ContactQuery, AsksForEveryWordInNameOrOrganization) {
    EXPECT_EQ(contactQuery("Jana"), R"((and (or (contains "full_name" "Jana") (contains "org" "Jana"))))");
    EXPECT_EQ(contactQuery("a\n\"b\\"), R"((and (or (contains "full_name" "a") (contains "org" "a")))"
                                        R"( (or (contains "full_name" "\"b\\") (contains "org" "\"b\\"))))");
}

TEST(ContactQuery, HasBounds) {
    EXPECT_TRUE(contactQuery(words(20)).has_value());
    EXPECT_FALSE(contactQuery(words(21)).has_value());
    EXPECT_TRUE(contactQuery(std::string(1000, 'a')).has_value());
    EXPECT_FALSE(contactQuery(std::string(1001, 'a')).has_value());
    for (const char* name : {"", " ", "\t\n", "\xe2\x80\x8b"}) EXPECT_FALSE(contactQuery(name).has_value());
}

} // namespace
} // namespace morvex
