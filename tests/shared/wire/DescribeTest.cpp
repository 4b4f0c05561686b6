#include "shared/wire/Describe.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <limits>

namespace morvex {

namespace {

enum class Colour { red, green };

struct Leaf {
    std::int64_t number = 0;
    std::uint64_t count = 0;
    double ratio = 0;
    Colour colour = Colour::red;
    bool operator==(const Leaf&) const = default;
};

struct Tree {
    std::vector<Leaf> items;
    std::optional<std::vector<std::string>> notes;
    std::optional<Bytes> data;
    bool operator==(const Tree&) const = default;
};

} // namespace

template <> inline constexpr std::array<std::string_view, 2> rawValues<Colour>{"red", "green"};

namespace {

void describe(auto& io, Is<Leaf> auto& leaf) {
    io.required("number", leaf.number);
    io.required("count", leaf.count);
    io.required("ratio", leaf.ratio);
    io.required("colour", leaf.colour);
}

void describe(auto& io, Is<Tree> auto& tree) {
    io.required("items", tree.items);
    io.optional("notes", tree.notes);
    io.optional("data", tree.data);
}

std::string leaf(std::string_view number, std::string_view count = "0", std::string_view ratio = "0") {
    return R"({"number":)" + std::string{number} + R"(,"count":)" + std::string{count} + R"(,"ratio":)" +
           std::string{ratio} + R"(,"colour":"green"})";
}

std::string failureOf(std::string_view json) {
    const auto read = decode<Tree>(json);
    return read ? "none" : read.error().popis().czech();
}

TEST(Describe, WritesFieldsInTheirOrderAndLeavesOutWhatHasNoValue) {
    EXPECT_EQ(encode(Tree{}), R"({"items":[]})");
    EXPECT_EQ(encode(Tree{{{-1, 2, 0.5, Colour::green}}, std::vector<std::string>{}, Bytes{1}}),
              R"({"items":[{"number":-1,"count":2,"ratio":0.5,"colour":"green"}],"notes":[],"data":"AQ=="})");
}

TEST(Describe, ReadsMissingAndNullAlike) {
    EXPECT_EQ(decode<Tree>(R"({"items":[]})").value(), Tree{});
    EXPECT_EQ(decode<Tree>(R"({"items":[],"notes":null,"data":null})").value(), Tree{});
    EXPECT_EQ(decode<Tree>(R"({"items":[],"notes":[]})").value().notes, std::vector<std::string>{});
    EXPECT_EQ(failureOf("{}"), "Pole „items“ chybí.");
    EXPECT_EQ(failureOf(R"({"items":null})"), "Pole „items“ chybí.");
}

TEST(Describe, IgnoresKeysThatItDoesNotKnow) {
    EXPECT_EQ(decode<Tree>(R"({"future":{"a":[1,2]},"items":[]})").value(), Tree{});
}

TEST(Describe, LetsTheLastOfEqualKeysCount) {
    EXPECT_EQ(decode<Tree>(R"({"items":3,"items":[]})").value(), Tree{});
    EXPECT_EQ(failureOf(R"({"items":[],"items":3})"), "Pole „items“ má špatný typ (číslo).");
}

TEST(Describe, NamesTheFailingField) {
    const auto good = leaf("1");
    const std::pair<std::string, const char*> cases[] = {
        {"[]", "Zpráva má špatný typ (pole)."},
        {"null", "Zpráva má špatný typ (null)."},
        {R"({"items":{}})", "Pole „items“ má špatný typ (objekt)."},
        {R"({"items":[3]})", "Pole „items[0]“ má špatný typ (číslo)."},
        {R"({"items":[null]})", "Pole „items[0]“ má špatný typ (null)."},
        {R"({"items":[)" + good + R"(,{}]})", "Pole „items[1].number“ chybí."},
        {R"({"items":[)" + good + "," + leaf("\"1\"") + "]}", "Pole „items[1].number“ má špatný typ (text)."},
        {R"({"items":[)" + leaf("true") + "]}",
         "Pole „items[0].number“ má špatný typ (pravdivostní hodnota)."},
        {R"({"items":[{"number":1,"count":1,"ratio":1,"colour":"blue"}]})",
         "Pole „items[0].colour“ má neznámou hodnotu „blue“."},
        {R"({"items":[{"number":1,"count":1,"ratio":1,"colour":"Red"}]})",
         "Pole „items[0].colour“ má neznámou hodnotu „Red“."},
        {R"({"items":[{"number":1,"count":1,"ratio":1,"colour":0}]})",
         "Pole „items[0].colour“ má špatný typ (číslo)."},
        {R"({"items":[],"notes":["a",1]})", "Pole „notes[1]“ má špatný typ (číslo)."},
        {R"({"items":[],"data":"A"})", "Pole „data“ má nečitelnou hodnotu „A“."},
    };
    for (const auto& [json, expected] : cases) EXPECT_EQ(failureOf(json), expected) << json;
}

TEST(Describe, QuotesOnlyTheStartOfAHostileText) {
    const auto text = "x" + std::string(60, 'y');
    EXPECT_EQ(failureOf(R"({"items":[],"data":")" + text + "\"}"),
              "Pole „data“ má nečitelnou hodnotu „x" + std::string(39, 'y') + "…“.");
    std::string accented = "x";
    for (int count = 0; count < 60; ++count) accented += "ž";
    EXPECT_TRUE(failureOf(R"({"items":[],"data":")" + accented + "\"}").ends_with("žž…“."));
}

struct NumberCase {
    const char* text;
    std::optional<std::int64_t> number;
    std::optional<std::uint64_t> count;
};

TEST(Describe, ReadsIntegersExactlyOrNotAtAll) {
    constexpr auto none = std::nullopt;
    const NumberCase cases[] = {
        {"0", 0, 0},
        {"-0", 0, 0},
        {"-0.0", 0, 0},
        {"3.0", 3, 3},
        {"1e2", 100, 100},
        {"-1", -1, none},
        {"-1.0", -1, none},
        {"0.5", none, none},
        {"-0.5", none, none},
        {"9007199254740992.0", none, none},
        {"9007199254740993e0", none, none},
        {"9007199254740991.5", none, none},
        {"9007199254740994.0", none, none},
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max(), 9223372036854775807},
        {"9223372036854775808", none, 9223372036854775808u},
        {"-9223372036854775808", std::numeric_limits<std::int64_t>::min(), none},
        {"-9223372036854775809", none, none},
        {"18446744073709551615", none, std::numeric_limits<std::uint64_t>::max()},
        {"18446744073709551616", none, none},
        {"1e19", none, none},
        {"1e400", none, none},
    };
    for (const auto& expected : cases) {
        const auto number = decode<Leaf>(leaf(expected.text));
        EXPECT_EQ(number ? std::optional{number->number} : none, expected.number) << expected.text;
        const auto count = decode<Leaf>(leaf("0", expected.text));
        EXPECT_EQ(count ? std::optional{count->count} : none, expected.count) << expected.text;
    }
}

TEST(Describe, ReadsFloatingNumbersThatHaveWholeSeconds) {
    for (const auto& [text, expected] : {std::pair{"1", 1.0},
                                         {"-0.25", -0.25},
                                         {"18446744073709551615", 0.0},
                                         {"9223372036854775808", 0.0},
                                         {"1e400", 0.0},
                                         {"1e18", 1e18}}) {
        const auto read = decode<Leaf>(leaf("0", "0", text));
        EXPECT_EQ(read ? read->ratio : 0.0, expected) << text;
    }
}

TEST(Describe, AListOfRecordsIsADocumentToo) {
    const std::vector<Leaf> list{{.number = 1}, {.number = -2}};
    EXPECT_EQ(decode<std::vector<Leaf>>(encode(list)).value(), list);
    EXPECT_EQ(encode(std::vector<Leaf>{}), "[]");
    EXPECT_FALSE(decode<std::vector<Leaf>>("{}"));
    const auto broken = decode<std::vector<Leaf>>("[" + leaf("1") + ",{}]");
    ASSERT_FALSE(broken);
    EXPECT_NE(broken.error().popis().czech().find("[1].number"), std::string::npos)
        << broken.error().popis().czech();
}

TEST(Describe, ReadsFromBytesAndWithinTheCallersLimit) {
    EXPECT_EQ(decode<Tree>(asBytes(R"({"items":[]})")).value(), Tree{});
    EXPECT_EQ(decode<Tree>(R"({"items":[]})", {.size = 11}).error().popis().czech(),
              "Zpráva je příliš dlouhá.");
}

} // namespace
} // namespace morvex
