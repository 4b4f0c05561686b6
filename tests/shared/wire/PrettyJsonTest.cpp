#include "shared/wire/PrettyJson.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(PrettyJson, SortsKeysAndGivesEachALine) {
    auto value = parseJson(R"({"b":[1,{"z":null,"a":true}],"a":"ř\n","c":{},"d":[]})").value();
    EXPECT_EQ(prettyJson(value.as_object()), "{\n"
                                             "  \"a\" : \"ř\\n\",\n"
                                             "  \"b\" : [\n"
                                             "    1,\n"
                                             "    {\n"
                                             "      \"a\" : true,\n"
                                             "      \"z\" : null\n"
                                             "    }\n"
                                             "  ],\n"
                                             "  \"c\" : {},\n"
                                             "  \"d\" : []\n"
                                             "}");
    EXPECT_EQ(prettyJson(boost::json::object{}), "{}");
}

TEST(PrettyJson, GivesEachElementOfAListALine) {
    EXPECT_EQ(prettyJson(boost::json::array{1, "a"}), "[\n  1,\n  \"a\"\n]");
    EXPECT_EQ(prettyJson(boost::json::array{}), "[]");
}

} // namespace
} // namespace morvex
