#include "app/tools/Arguments.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

namespace morvex {
namespace {

boost::json::object parse(const char* json) {
    return std::move(parseJson(json).value().as_object());
}

TEST(Arguments, AValueOfAnotherTypeCountsAsMissing) {
    auto object = parse(R"({"a":1,"b":"x","c":true,"d":["x"],"e":null,"f":""})");
    Arguments arguments(object);
    for (const char* key : {"a", "c", "d", "e", "missing"}) {
        EXPECT_EQ(arguments.text(key), std::nullopt) << key;
        EXPECT_EQ(arguments.textOrEmpty(key), "") << key;
    }
    EXPECT_EQ(arguments.text("b"), "x");
    EXPECT_EQ(arguments.text("f"), "");
    EXPECT_EQ(arguments.boolean("c"), true);
    EXPECT_EQ(arguments.boolean("a"), std::nullopt);
    EXPECT_EQ(arguments.integer("b"), std::nullopt);
    EXPECT_EQ(arguments.integer("c"), std::nullopt);
}

TEST(Arguments, AnIntegerIsCutAndOneOutOfRangeIsMissing) {
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
    for (const auto& row : rows) {
        auto object = parse((std::string(R"({"n":)") + row.json + "}").c_str());
        EXPECT_EQ(Arguments(object).integer("n"), row.wanted) << row.json;
    }
}

TEST(Arguments, AListWithOneElementThatIsNoTextIsMissingAsAWhole) {
    auto object = parse(R"({"good":["a",""],"empty":[],"mixed":["a",1],"no":"a"})");
    Arguments arguments(object);
    EXPECT_EQ(arguments.texts("good"), (std::vector<std::string>{"a", ""}));
    EXPECT_EQ(arguments.texts("empty"), std::vector<std::string>{});
    EXPECT_EQ(arguments.texts("mixed"), std::nullopt);
    EXPECT_EQ(arguments.texts("no"), std::nullopt);
}

} // namespace
} // namespace morvex
