#include "tests/attack/JsonTable.h"

#include "shared/wire/JsonDocument.h"

namespace morvex {
namespace {

constexpr auto notJson = DecodeError::Reason::notJson;
constexpr auto tooLong = DecodeError::Reason::tooLong;
constexpr auto tooManyValues = DecodeError::Reason::tooManyValues;
constexpr auto outOfRange = DecodeError::Reason::outOfRange;

std::string repeat(std::string_view piece, std::size_t times) {
    std::string text;
    text.reserve(piece.size() * times);
    while (times-- > 0) text += piece;
    return text;
}

std::string nested(std::string_view open, std::string_view close, std::size_t depth) {
    return repeat(open, depth) + "0" + repeat(close, depth);
}

std::string inQuotes(std::string_view content) {
    return '"' + std::string(content) + '"';
}

/// A row whose value is written as it was read.
JsonRow same(const char* what, std::string text) {
    return {what, text, text};
}

} // namespace

std::vector<JsonRow> jsonDepths() {
    return {
        same("arrays at the limit", nested("[", "]", jsonDepthLimit)),
        same("objects at the limit", nested("{\"a\":", "}", jsonDepthLimit)),
        {"arrays one deeper", nested("[", "]", jsonDepthLimit + 1), notJson},
        {"objects one deeper", nested("{\"a\":", "}", jsonDepthLimit + 1), notJson},
        {"both in turn, one deeper", nested("[{\"a\":", "}]", jsonDepthLimit / 2 + 1), notJson},
        {"a million arrays that stay open", repeat("[", 1'000'000), notJson},
        {"a million objects that stay open", repeat("{\"a\":", 1'000'000), notJson},
        {"a million arrays, closed", nested("[", "]", 1'000'000), notJson},
        {"a million ends", repeat("]", 1'000'000), notJson},
        {"deep behind a flat beginning", "[1,[2]," + nested("[", "]", jsonDepthLimit) + "]", notJson},
        same("side by side, never deep", "[" + repeat("[],", 1000) + "[]]"),
    };
}

std::vector<JsonRow> jsonSizes() {
    const auto text = std::string(jsonSizeLimit - 2, 'x');
    return {
        same("a string of the whole limit", inQuotes(text)),
        {"one byte over the limit", inQuotes(text) + " ", tooLong},
        {"blanks beyond the limit", std::string(jsonSizeLimit + 1, ' '), tooLong},
        {"only blanks", std::string(jsonSizeLimit, ' '), notJson},
        {"blanks around a value", std::string(1'000'000, ' ') + "1" + std::string(1'000'000, '\n'), "1"},
        {"five million zeros", '[' + repeat("0,", 5'000'000) + "0]", tooManyValues},
        {"five million empty objects", '[' + repeat("{},", 5'000'000) + "0]", tooManyValues},
        {"five million empty strings", '[' + repeat("\"\",", 5'000'000) + "0]", tooManyValues},
        {"three million equal keys", '{' + repeat("\"\":0,", 3'000'000) + "\"\":0}", tooManyValues},
        {"a key of a million bytes", "{" + inQuotes(std::string(1'000'000, 'k')) + ":1}",
         "{" + inQuotes(std::string(1'000'000, 'k')) + ":1}"},
        {"a million escaped quotes", inQuotes(repeat("\\\"", 1'000'000)),
         inQuotes(repeat("\\\"", 1'000'000))},
        {"a million escaped letters", inQuotes(repeat("\\u0061", 1'000'000)),
         inQuotes(std::string(1'000'000, 'a'))},
        {"a number of a million digits", "1" + std::string(1'000'000, '0'), outOfRange},
        {"a fraction of a million digits", "0." + std::string(1'000'000, '3'), "0.3333333333333333"},
        {"an exponent of a million digits", "1e" + std::string(1'000'000, '9'), notJson},
    };
}

std::vector<JsonRow> jsonKeys() {
    return {
        {"the last of equal keys counts", R"({"a":1,"a":2})", R"({"a":2})"},
        {"it stands at the place of the first", R"({"a":1,"b":2,"a":3})", R"({"a":3,"b":2})"},
        {"three times, another type each", R"({"a":1,"a":"x","a":null})", R"({"a":null})"},
        {"equal after unescaping", R"({"a":1,"\u0061":2})", R"({"a":2})"},
        same("equal but for the case", R"({"a":1,"A":2})"),
        same("equal but for the normal form", "{\"\u00e9\":1,\"e\u0301\":2}"),
        same("equal but for a blank", R"({"a":1,"a ":2})"),
        {"equal but for a zero byte", R"({"a":1,"a\u0000":2})", R"({"a":1,"a\u0000":2})"},
        same("an empty key", R"({"":1})"),
        same("names that mean something elsewhere",
             R"({"__proto__":1,"constructor":2,"toString":3,"$ref":4})"),
        {"equal within equal", R"({"a":{"b":1},"a":{"b":2,"b":3}})", R"({"a":{"b":3}})"},
        {"no key", "{:1}", notJson},
        {"a number as key", "{1:1}", notJson},
        {"a bare word as key", "{a:1}", notJson},
        {"single quotes", "{'a':1}", notJson},
        {"null as key", "{null:1}", notJson},
        {"two colons", R"({"a"::1})", notJson},
        {"an equals sign", R"({"a"=1})", notJson},
        {"a key without a value", R"({"a"})", notJson},
        {"a key without a value, with colon", R"({"a":})", notJson},
    };
}

std::vector<JsonRow> jsonStructures() {
    return {
        {"nothing", "", notJson},
        {"a blank", " ", notJson},
        {"a zero byte", std::string(1, '\0'), notJson},
        {"a zero byte behind", std::string("1\0", 2), notJson},
        {"a byte order mark", "\xef\xbb\xbf{}", notJson},
        {"UTF-16", std::string("[\0]\0", 4), notJson},
        {"a comma at the end of an array", "[1,]", notJson},
        {"a comma at the end of an object", R"({"a":1,})", notJson},
        {"a comma at the start", "[,1]", notJson},
        {"two commas", "[1,,2]", notJson},
        {"only a comma", "[,]", notJson},
        {"no comma", "[1 2]", notJson},
        {"no comma in an object", R"({"a":1 "b":2})", notJson},
        {"the wrong end", "[1}", notJson},
        {"an end too many", "[1]]", notJson},
        {"an end too few", "[[1]", notJson},
        {"two values", "1 2", notJson},
        {"two objects", "{}{}", notJson},
        {"lines of objects", "{}\n{}", notJson},
        {"a comment", "// c\n1", notJson},
        {"a comment in between", "[1,/* c */2]", notJson},
        {"a comment at the end", "1 // c", notJson},
        {"a hash", "# c\n1", notJson},
        {"half a word", "tru", notJson},
        {"a word too long", "nullx", notJson},
        {"a capital word", "True", notJson},
        {"an unknown word", "undefined", notJson},
        {"a form feed as blank", "[\f1]", notJson},
        {"a vertical tab as blank", "[\v1]", notJson},
        {"a hard blank", "[\u00a01]", notJson},
        {"all blanks that there are", " \t\r\n[ \t\r\n1 \t\r\n, \t\r\n2 \t\r\n] \t\r\n", "[1,2]"},
        same("true", "true"),
        same("false", "false"),
        same("null", "null"),
        same("an empty array", "[]"),
        same("an empty object", "{}"),
        same("a string alone", R"("x")"),
    };
}

std::vector<JsonRow> jsonNumbers() {
    return {
        same("zero", "0"),
        {"minus zero", "-0", "0"},
        same("the largest signed", "9223372036854775807"),
        same("one more", "9223372036854775808"),
        same("the least signed", "-9223372036854775808"),
        {"one less", "-9223372036854775809", "-9223372036854775808"},
        same("the largest unsigned", "18446744073709551615"),
        same("one more than that", "18446744073709551616"),
        same("2^53", "9007199254740992"),
        same("2^53 and one", "9007199254740993"),
        {"a whole number with a point", "1.0", "1"},
        {"a whole number with an exponent", "1e2", "100"},
        {"a capital exponent", "1E2", "100"},
        {"a signed exponent", "1e+2", "100"},
        {"a negative exponent", "25e-1", "2.5"},
        same("a tenth", "0.1"),
        {"the largest double", "1.7976931348623157e308", "1.7976931348623157e+308"},
        {"the least double above zero", "5e-324", "5e-324"},
        {"beneath the least", "1e-400", "0"},
        {"beyond the largest", "1e309", outOfRange},
        {"far beyond", "1e400", outOfRange},
        {"far below", "-1e400", outOfRange},
        {"beyond, deep inside", R"([1,{"a":[1e309]}])", outOfRange},
        {"an exponent over all integers", "1e99999999999999999999", notJson},
        {"a leading zero", "01", notJson},
        {"zeros", "00", notJson},
        {"a minus and a leading zero", "-01", notJson},
        {"only a minus", "-", notJson},
        {"two minuses", "--1", notJson},
        {"a plus", "+1", notJson},
        {"no digit before the point", ".5", notJson},
        {"no digit behind the point", "1.", notJson},
        {"no digit between point and exponent", "1.e5", notJson},
        {"no exponent", "1e", notJson},
        {"only its sign", "1e+", notJson},
        {"an exponent with a point", "1e1.5", notJson},
        {"two points", "1.2.3", notJson},
        {"two exponents", "1e2e3", notJson},
        {"hexadecimal", "0x10", notJson},
        {"octal", "0o7", notJson},
        {"binary", "0b1", notJson},
        {"an underscore", "1_000", notJson},
        {"a comma within", "1,000", notJson},
        {"a blank within", "1 000", notJson},
        {"an apostrophe", "1'000", notJson},
        {"a suffix", "10n", notJson},
        {"not a number", "NaN", notJson},
        {"not a number, small", "nan", notJson},
        {"infinity", "Infinity", notJson},
        {"infinity, short", "inf", notJson},
        {"minus infinity", "-Infinity", notJson},
        {"Arabic digits", "\u0661", notJson},
        {"wide digits", "\uff11", notJson},
        {"a minus that is a dash", "\u22121", notJson},
    };
}

std::vector<JsonRow> jsonStrings() {
    return {
        {"a bare continuation", inQuotes("\x80"), notJson},
        {"a sequence cut by the quote", inQuotes("\xc3"), notJson},
        {"a sequence cut by a letter", inQuotes("\xe2\x82x"), notJson},
        {"two bytes for one", inQuotes("\xc0\xaf"), notJson},
        {"two bytes for a quote", inQuotes("\xc0\xa2"), notJson},
        {"three bytes for a slash", inQuotes("\xe0\x80\xaf"), notJson},
        {"four bytes for a slash", inQuotes("\xf0\x80\x80\xaf"), notJson},
        {"two bytes for zero", inQuotes("\xc0\x80"), notJson},
        {"a surrogate in UTF-8", inQuotes("\xed\xa0\x80"), notJson},
        {"a pair of surrogates in UTF-8", inQuotes("\xed\xa0\xbd\xed\xb8\x80"), notJson},
        {"beyond Unicode", inQuotes("\xf4\x90\x80\x80"), notJson},
        {"five bytes", inQuotes("\xf8\x88\x80\x80\x80"), notJson},
        {"six bytes", inQuotes("\xfc\x84\x80\x80\x80\x80"), notJson},
        {"no byte of UTF-8", inQuotes("\xff"), notJson},
        {"Latin 2", inQuotes("P\xf8\xedli\xb9"), notJson},
        {"bad in a key", "{\"\xfe\":1}", notJson},
        {"bad outside of strings", "[\x80]", notJson},
        {"a high surrogate alone", R"("\ud800")", notJson},
        {"a low surrogate alone", R"("\udc00")", notJson},
        {"two high ones", R"("\ud800\ud800")", notJson},
        {"two low ones", R"("\udc00\udc00")", notJson},
        {"the pair in the wrong order", R"("\ude00\ud83d")", notJson},
        {"a high one and a letter", R"("\ud83dx")", notJson},
        {"a high one and an escaped letter", R"("\ud83d\u0041")", notJson},
        {"a high one and another escape", R"("\ud83d\n")", notJson},
        {"a lone one in a key", R"({"\ud800":1})", notJson},
        {"a pair", R"("\ud83d\ude00")", inQuotes("\U0001f600")},
        {"the last of Unicode, escaped", R"("\udbff\udfff")", inQuotes("\U0010ffff")},
        same("the last of Unicode", inQuotes("\U0010ffff")),
        same("no characters", inQuotes("\ufffe\uffff\ufdd0")),
        same("lines and directions", inQuotes("\u2028\u2029\u202e\u200b\ufeff")),
        same("an escaped zero", R"("a\u0000b")"),
        {"a raw zero", std::string("\"a\0b\"", 5), notJson},
        {"a raw line end", "\"a\nb\"", notJson},
        {"a raw tab", "\"a\tb\"", notJson},
        {"a raw escape", "\"\x1b[2J\"", notJson},
        same("a raw delete, which is none of them", inQuotes("\x7f")),
        {"all short escapes", R"("\"\\\/\b\f\n\r\t")", R"("\"\\/\b\f\n\r\t")"},
        {"capital digits", R"("\u00AF\u00af")", inQuotes("\u00af\u00af")},
        {"an unknown escape", R"("\x41")", notJson},
        {"an escaped apostrophe", R"("\'")", notJson},
        {"an escaped zero of C", R"("\0")", notJson},
        {"a capital U", R"("\U0041")", notJson},
        {"braces", R"("\u{41}")", notJson},
        {"three digits", R"("\u041")", notJson},
        {"a digit that is none", R"("\u00g0")", notJson},
        {"an escape cut off", R"("\)", notJson},
        {"no end", R"("abc)", notJson},
        {"single quotes", "'abc'", notJson},
        {"two strings", R"("a""b")", notJson},
    };
}

} // namespace morvex
