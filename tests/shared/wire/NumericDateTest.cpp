#include "shared/wire/NumericDate.h"

#include "shared/wire/Describe.h"
#include "shared/wire/Json.h"

#include <gtest/gtest.h>

namespace morvex {

namespace {

using namespace std::chrono_literals;

struct Dated {
    NumericDate at;
    std::uint64_t count = 0;
};

void describe(auto& io, Is<Dated> auto& dated) {
    io.required("at", dated.at);
    io.assumed("count", dated.count, 7);
}

} // namespace

template struct Codec<Dated>;

namespace {

struct Row {
    const char* name;
    const char* number;
    Date date;
};

std::string textOf(const std::string& number) {
    return R"({"at":)" + number + R"(,"count":1})";
}

TEST(NumericDate, CountsSecondsFrom2001) {
    const std::vector<Row> rows{
        {"the epoch", "0E0", dateFromSeconds(978'307'200)},
        {"after it", "7.858944005E8", dateFromSeconds(1'764'201'600) + 500ms},
        {"before it", "-1.25E0", dateFromSeconds(978'307'198) + 750ms},
        {"a microsecond", "1E-6", dateFromSeconds(978'307'200) + 1us},
    };
    for (const auto& row : rows) {
        auto read = decode<Dated>(textOf(row.number));
        ASSERT_TRUE(read) << row.name;
        EXPECT_EQ(Date(read->at), row.date) << row.name;
        EXPECT_EQ(decode<Dated>(encode(*read))->at, read->at) << row.name;
    }
}

TEST(NumericDate, ReadsAWholeNumberToo) {
    EXPECT_EQ(wholeSeconds(decode<Dated>(textOf("60")).value().at), 978'307'260);
}

TEST(NumericDate, RefusesWhatHasNoYearOfFourDigits) {
    for (const char* number : {"252423993600", "-63145526401", "1e18", "-1e18", "1e300", "\"0\"", "null"})
        EXPECT_FALSE(decode<Dated>(textOf(number))) << number;
}

TEST(Describe, AKeyThatOlderRecordsLackIsAssumed) {
    EXPECT_EQ(decode<Dated>(R"({"at":0})").value().count, 7U);
    EXPECT_EQ(decode<Dated>(R"({"at":0,"count":null})").value().count, 7U);
    EXPECT_EQ(decode<Dated>(R"({"at":0,"count":2})").value().count, 2U);
    EXPECT_FALSE(decode<Dated>(R"({"at":0,"count":"2"})"));
}

} // namespace
} // namespace morvex
