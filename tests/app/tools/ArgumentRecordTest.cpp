#include "app/tools/ArgumentRecord.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

namespace morvex {
namespace {

struct Record {
    std::string title;
    std::optional<std::string> note;
    std::optional<std::int64_t> limit;
    std::optional<bool> all;
    std::optional<std::vector<std::string>> words;
    std::optional<std::string> phone;
};

void describe(auto& io, Is<Record> auto& record) {
    io.required("title", record.title);
    io.optional("note", record.note);
    io.optional("limit", record.limit);
    io.optional("all", record.all);
    io.optional("words", record.words);
    io.added("phone", record.phone);
}

Record read(const std::string& json) {
    return readArguments<Record>(parseJson(json).value().as_object());
}

TEST(ArgumentRecord, ReadsEachTypeAndTellsAbsentFromEmpty) {
    const auto record =
        read(R"({"title":"t","note":"","limit":5,"all":true,"words":["a",""],"phone":"p","more":1})");
    EXPECT_EQ(record.title, "t");
    EXPECT_EQ(record.note, "");
    EXPECT_EQ(record.limit, 5);
    EXPECT_EQ(record.all, true);
    EXPECT_EQ(record.words, (std::vector<std::string>{"a", ""}));
    EXPECT_EQ(record.phone, "p");
    const auto empty = read("{}");
    EXPECT_EQ(empty.title, "") << "one that is required counts as empty";
    EXPECT_EQ(empty.note, std::nullopt);
}

TEST(ArgumentRecord, AValueOfAnotherTypeCountsAsMissing) {
    for (const char* other : {"1", "true", R"(["x"])", "null", "{}"}) {
        const auto record = read(std::string(R"({"title":)") + other + R"(,"note":)" + other + "}");
        EXPECT_EQ(record.title, "") << other;
        EXPECT_EQ(record.note, std::nullopt) << other;
    }
    const auto record = read(R"({"limit":"5","all":1,"words":"a"})");
    EXPECT_EQ(record.limit, std::nullopt);
    EXPECT_EQ(record.all, std::nullopt);
    EXPECT_EQ(record.words, std::nullopt);
    EXPECT_EQ(read(R"({"limit":true})").limit, std::nullopt);
}

TEST(ArgumentRecord, AnIntegerIsCutAndOneOutOfRangeIsMissing) {
    struct Row {
        const char* json;
        std::optional<std::int64_t> wanted;
    };

    const Row rows[] = {
        {"5", 5},
        {"-5", -5},
        {"5.9", 5},
        {"-5.9", -5},
        {"1e3", 1000},
        {"9223372036854775807", INT64_MAX},
        {"-9223372036854775808", INT64_MIN},
        {"9223372036854775808", std::nullopt},
        {"1e19", std::nullopt},
        {"-1e19", std::nullopt},
        {"1e300", std::nullopt},
    };
    for (const auto& row : rows)
        EXPECT_EQ(read(std::string(R"({"limit":)") + row.json + "}").limit, row.wanted) << row.json;
}

TEST(ArgumentRecord, AListWithOneElementThatIsNoTextIsMissingAsAWhole) {
    EXPECT_EQ(read(R"({"words":["a",1]})").words, std::nullopt);
    EXPECT_EQ(read(R"({"words":[]})").words, std::vector<std::string>{});
}

struct Named {
    std::optional<std::string> id;
};

void describe(auto& io, Is<Named> auto& named) {
    io.required("id", named.id);
}

TEST(ArgumentRecord, ARequiredTextThatIsAbsentMayDifferFromAnEmptyOne) {
    EXPECT_EQ(readArguments<Named>(parseJson(R"({"id":""})").value().as_object()).id, "");
    EXPECT_EQ(readArguments<Named>(parseJson("{}").value().as_object()).id, std::nullopt);
    EXPECT_EQ(listArguments<Named>(), (std::vector<ArgumentRow>{{"id", "string", true}}));
}

TEST(ArgumentRecord, ListsWhatItDeclaresButForWhatThePhoneAdds) {
    EXPECT_EQ(listArguments<Record>(), (std::vector<ArgumentRow>{{"title", "string", true},
                                                                 {"note", "string", false},
                                                                 {"limit", "number", false},
                                                                 {"all", "boolean", false},
                                                                 {"words", "array", false}}));
}

} // namespace
} // namespace morvex
