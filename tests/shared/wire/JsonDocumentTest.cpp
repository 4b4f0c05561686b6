#include "shared/wire/JsonDocument.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using Reason = DecodeError::Reason;

std::string repeat(std::string_view piece, std::size_t times) {
    std::string text;
    while (times-- > 0) text += piece;
    return text;
}

std::optional<Reason> refusal(std::string_view text, JsonLimits limits = {}) {
    const auto read = parseJson(text, limits);
    if (read) return std::nullopt;
    const auto* error = read.error().as<DecodeError>();
    return error ? std::optional{error->reason} : std::nullopt;
}

TEST(JsonDocument, RefusesWhatIsNoStrictJson) {
    for (const auto* text : {
             "",          " ",
             "nan",       "NaN",
             "Infinity",  "-Infinity",
             "undefined", "True",
             "nul",       "'a'",
             "{",         "}",
             "[",         "[1",
             "[1,]",      "[,1]",
             "[1 2]",     "{\"a\"}",
             "{\"a\":}",  "{\"a\":1,}",
             "{a:1}",     "{\"a\":1 \"b\":2}",
             "// c\n1",   "/* c */ 1",
             "1 // c",    "\xef\xbb\xbf{}",
             "{}{}",      "{} x",
             "1 2",       "\"a\"\"b\"",
             "\"",        "\"\n\"",
             "\"\t\"",    "\"\\x41\"",
             "\"\\u12\"", "\"\\u12g4\"",
             "\"\\",      "\0",
         })
        EXPECT_EQ(refusal(text), Reason::notJson) << text;
    EXPECT_EQ(refusal(std::string_view{"{}\0", 3}), Reason::notJson);
    EXPECT_EQ(refusal(std::string_view{"\"a\0b\"", 5}), Reason::notJson);
}

TEST(JsonDocument, RefusesNumbersOutsideTheGrammarOrTheRange) {
    for (const auto* text :
         {"01", "-", "-01", "+1", "1.", ".1", "1e", "1e+", "0x10", "1_000", "--1", "1e99999999999"})
        EXPECT_EQ(refusal(text), Reason::notJson) << text;
    for (const auto* text : {"1e400", "-1e400", "[1,{\"a\":1e309}]"})
        EXPECT_EQ(refusal(text), Reason::outOfRange) << text;
}

TEST(JsonDocument, RefusesBadUtf8AndLoneSurrogates) {
    for (const auto* text : {"\"\x80\"", "\"\xc3\"", "\"\xc0\xaf\"", "\"\xe0\x80\xaf\"", "\"\xed\xa0\x80\"",
                             "\"\xf4\x90\x80\x80\"", "\"\xff\"", "{\"\xfe\":1}", R"("\ud800")", R"("\udc00")",
                             R"("\ud800\ud800")", R"("\ud83dx")", R"("\ud83d\u0041")"})
        EXPECT_EQ(refusal(text), Reason::notJson) << text;
    EXPECT_EQ(parseJson(R"("\ud83d\ude00")").value(), boost::json::value("😀"));
}

TEST(JsonDocument, ReadsEscapedZeroBytes) {
    EXPECT_EQ(parseJson(R"("a\u0000b")").value().as_string().size(), 3u);
}

TEST(JsonDocument, NestsExactlyAsDeepAsTheLimit) {
    for (const auto& [open, close] : {std::pair{"[", "]"}, std::pair{"{\"a\":", "}"}}) {
        const auto nested = [&](std::size_t depth) {
            return repeat(open, depth) + "0" + repeat(close, depth);
        };
        EXPECT_EQ(refusal(nested(jsonDepthLimit)), std::nullopt);
        EXPECT_EQ(refusal(nested(jsonDepthLimit + 1)), Reason::notJson);
    }
    EXPECT_EQ(refusal(repeat("[", 1'000'000)), Reason::notJson);
    EXPECT_EQ(refusal(repeat("{\"a\":", 1'000'000)), Reason::notJson);
}

TEST(JsonDocument, ReadsUpToTheCallersLimit) {
    EXPECT_EQ(refusal("[1]", {.size = 3}), std::nullopt);
    EXPECT_EQ(refusal("[1] ", {.size = 3}), Reason::tooLong);
    EXPECT_EQ(refusal(std::string(jsonSizeLimit + 1, ' ')), Reason::tooLong);
}

TEST(JsonDocument, ReadsAHugeString) {
    const std::string text(jsonSizeLimit - 2, 'x');
    EXPECT_EQ(parseJson('"' + text + '"').value().as_string().size(), text.size());
}

TEST(JsonDocument, RefusesATextThatIsAllValues) {
    EXPECT_EQ(refusal('[' + repeat("0,", 5'000'000) + "0]"), Reason::tooManyValues);
    EXPECT_EQ(refusal('[' + repeat("{},", 5'000'000) + "0]"), Reason::tooManyValues);
    EXPECT_EQ(refusal('{' + repeat("\"\":0,", 3'000'000) + "\"\":0}"), Reason::tooManyValues);
    EXPECT_EQ(refusal('[' + repeat("0,", 60'000) + "0]"), std::nullopt);
}

TEST(JsonDocument, ReadsExactlyAsManyValuesAsTheLimitsSay) {
    constexpr JsonLimits limits{.values = 20};
    // Each list is a value itself.
    for (const auto* value :
         {"0", "-1", "18446744073709551615", "0.5", "\"x\"", "true", "null", "[]", "{}"}) {
        const auto ofValues = [value](std::size_t count) {
            return '[' + repeat(std::string(value) + ',', count - 2) + value + ']';
        };
        EXPECT_EQ(refusal(ofValues(20), limits), std::nullopt) << value;
        EXPECT_EQ(refusal(ofValues(21), limits), Reason::tooManyValues) << value;
    }
    EXPECT_EQ(refusal('{' + repeat("\"\":0,", 18) + "\"\":0}", limits), std::nullopt);
    EXPECT_EQ(refusal('{' + repeat("\"\":0,", 19) + "\"\":0}", limits), Reason::tooManyValues);
}

/// An object with so many different names of so many bytes each.
std::string objectOf(std::size_t members, std::size_t nameSize) {
    std::string text = "{";
    for (std::size_t i = 0; i < members; ++i) {
        auto name = std::to_string(i);
        name.insert(0, nameSize - name.size(), 'n');
        text += (i > 0 ? ",\"" : "\"") + name + "\":0";
    }
    return text + '}';
}

TEST(JsonDocument, RefusesNamesThatMayHaveToBeComparedTooOften) {
    struct Row {
        std::size_t members, nameSize, objects;
        bool isRead;
    };

    constexpr Row rows[] = {
        {16, 16, 900, true},     {680, 4, 1, true},     {730, 4, 1, false},      {340, 4, 4, true},
        {340, 4, 5, false},      {68, 4, 100, true},    {100, 4, 100, false},    {100, 1024, 1, true},
        {150, 1024, 1, true},    {200, 1024, 1, false}, {1, 4'000'000, 1, true}, {16, 100'000, 1, true},
        {16, 250'000, 1, false},
    };
    for (const auto& row : rows) {
        const auto text = '[' + repeat(objectOf(row.members, row.nameSize) + ',', row.objects) + "0]";
        EXPECT_EQ(refusal(text, messageLimits),
                  row.isRead ? std::nullopt : std::optional(Reason::tooManyValues))
            << row.objects << " objects of " << row.members << " names of " << row.nameSize;
    }
    // Names within names count by the object that they are in.
    EXPECT_EQ(refusal(R"({"a":{"b":{"c":)" + objectOf(680, 4) + "}}}", messageLimits), std::nullopt);
    EXPECT_EQ(refusal(R"({"a":{"b":{"c":)" + objectOf(730, 4) + "}}}", messageLimits), Reason::tooManyValues);
}

TEST(JsonDocument, WhatIsWrittenCanBeJudgedBeforeItHasToBeRead) {
    for (const auto limits : {JsonLimits{}, messageLimits, fileLimits(jsonSizeLimit, 0)}) {
        const std::string longText = '"' + repeat("\\n", 1'000'000) + '"';
        const std::size_t most = 500;
        for (const auto& text :
             {longText, '[' + repeat("0,", most) + "0]", '[' + repeat("[0],", most / 2) + "0]",
              '{' + repeat("\"\":0,", most) + "\"\":0}", '[' + repeat("{\"\":0},", most / 2) + "0]",
              '[' + repeat("{\"a\":\"\"},", most / 2) + "0]", '[' + repeat("\"\",", most * 2) + "0]"}) {
            EXPECT_TRUE(checkReadable(text, limits)) << text.substr(0, 20);
            EXPECT_EQ(refusal(text, limits), std::nullopt) << text.substr(0, 20);
        }
    }
    const auto manyValues = checkReadable('[' + repeat("\"\",", 5'000'000) + "0]", {});
    ASSERT_FALSE(manyValues);
    EXPECT_EQ(manyValues.error().popis().czech(), "Zpráva má příliš mnoho hodnot.");
    EXPECT_FALSE(checkReadable("[1] ", {.size = 3}));
    EXPECT_FALSE(checkReadable("[1", {}));
}

TEST(JsonDocument, WhatIsJudgedReadableIsRead) {
    for (const auto* value :
         {"0", "\"\"", "[]", "{}", "[[]]", "{\"\":[]}", "\"long enough for its own memory\""})
        for (const std::size_t count : {10'000U, 30'000U, 33'000U, 66'000U, 1'000'000U}) {
            const auto text = '[' + repeat(std::string(value) + ",", count) + "0]";
            if (text.size() > jsonSizeLimit) continue;
            EXPECT_EQ(checkReadable(text, {}).has_value(), !refusal(text)) << value << " x " << count;
        }
}

TEST(JsonDocument, LetsTheLastOfEqualKeysCount) {
    EXPECT_EQ(encode(parseJson(R"({"a":1,"b":2,"a":3})").value()), R"({"a":3,"b":2})");
}

TEST(JsonDocument, NamesTheByteWhereTheTextBreaks) {
    const auto read = parseJson("[1,x]");
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().popis().czech(), "Zpráva není platný JSON (bajt 3).");
}

} // namespace
} // namespace morvex
