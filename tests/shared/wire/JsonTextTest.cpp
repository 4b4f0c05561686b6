#include "shared/wire/JsonText.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <limits>

namespace morvex {
namespace {

std::string jsonString(std::string_view text) {
    std::string out;
    appendJsonString(out, text);
    return out;
}

std::string number(auto value) {
    std::string out;
    appendJsonNumber(out, value);
    return out;
}

TEST(JsonText, EscapesOnlyWhatItMust) {
    const std::pair<std::string_view, const char*> cases[] = {
        {"", R"("")"},
        {"plain text of more than eight bytes", R"("plain text of more than eight bytes")"},
        {"a/b", R"("a/b")"},
        {"say \"x\"", R"("say \"x\"")"},
        {"back\\slash", R"("back\\slash")"},
        {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
        {std::string_view{"\0\x01\x1f", 3}, R"("\u0000\u0001\u001F")"},
        {"\x7f", "\"\x7f\""},
        {"Příliš žluťoučký kůň", "\"Příliš žluťoučký kůň\""},
        {"😀 \u2028", "\"😀 \u2028\""},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(jsonString(text), expected);
}

TEST(JsonText, FindsTheByteToEscapeAtEveryPlace) {
    for (std::size_t place = 0; place < 24; ++place)
        for (const char special : {'"', '\\', '\n'}) {
            std::string text(24, 'a');
            text[place] = special;
            EXPECT_EQ(parseJson(jsonString(text)).value(), boost::json::value(text)) << place;
        }
}

TEST(JsonText, ReplacesWhatIsNoUtf8) {
    const std::pair<std::string_view, const char*> cases[] = {
        {"\x80", "\"\uFFFD\""},
        {"a\xc3", "\"a\uFFFD\""},
        {"\xc3(", "\"\uFFFD(\""},
        {"\xc0\xaf", "\"\uFFFD\uFFFD\""},
        {"\xe0\x9f\xbf", "\"\uFFFD\uFFFD\uFFFD\""},
        {"\xed\xa0\x80", "\"\uFFFD\uFFFD\uFFFD\""},
        {"\xf0\x8f\xbf\xbf", "\"\uFFFD\uFFFD\uFFFD\uFFFD\""},
        {"\xf4\x90\x80\x80", "\"\uFFFD\uFFFD\uFFFD\uFFFD\""},
        {"\xf5", "\"\uFFFD\""},
        {"\xff ok", "\"\uFFFD ok\""},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(jsonString(text), expected);
}

TEST(JsonText, KeepsTheEdgesOfUtf8) {
    for (const auto* text :
         {"\u0080", "\u07ff", "\u0800", "\xed\x9f\xbf", "\ue000", "\uffff", "\U00010000", "\U0010ffff"})
        EXPECT_EQ(jsonString(text), '"' + std::string{text} + '"');
}

TEST(JsonText, WritesNumbersThatReadBackExactly) {
    EXPECT_EQ(number(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(number(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(number(0.1), "0.1");
    EXPECT_EQ(number(-2.5), "-2.5");
    EXPECT_EQ(number(3.0), "3");
    EXPECT_EQ(number(1e300), "1e+300");
}

TEST(JsonTextDeathTest, EndsTheProcessForANumberThatIsNotFinite) {
    EXPECT_DEATH(number(std::numeric_limits<double>::infinity()), "not finite");
    EXPECT_DEATH(number(std::numeric_limits<double>::quiet_NaN()), "not finite");
}

TEST(JsonText, WritesAnyValueInTheOrderOfItsKeys) {
    const auto value =
        parseJson(R"( { "b" : [ 1 , -2 , 2.5 , "x\ny" , null ] , "a" : { } , "c\"" : [ true , false ] } )");
    EXPECT_EQ(encode(value.value()), R"({"b":[1,-2,2.5,"x\ny",null],"a":{},"c\"":[true,false]})");
    EXPECT_EQ(encode(boost::json::object{{"ok", true}}), R"({"ok":true})");
}

TEST(JsonText, NeverLetsBadUtf8OutOfAValue) {
    EXPECT_EQ(encode(boost::json::value("bad \xff")), "\"bad \uFFFD\"");
}

} // namespace
} // namespace morvex
