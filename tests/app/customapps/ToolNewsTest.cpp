#include "app/customapps/ToolNews.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

SeenTool changed(const std::string& before, const std::string& after, const std::string& schemaBefore = "{}",
                 const std::string& schemaAfter = "{}") {
    return {.name = "a",
            .known = SeenDescription{"1", before, schemaBefore},
            .news = SeenDescription{"2", after, schemaAfter}};
}

TEST(ToolNews, TellWhatWasAndWhatIs) {
    const auto news = toolNews(changed("reads", "sends"));
    EXPECT_EQ(news, (ToolNews{.name = "a", .before = "reads", .after = "sends"}));
    const auto schema = toolNews(changed("reads", "reads", R"({"x":1})", R"({"x":2})"));
    EXPECT_EQ(schema, (ToolNews{.name = "a", .schemaBefore = R"({"x":1})", .schemaAfter = R"({"x":2})"}));
}

TEST(ToolNews, ANewToolHasNoBefore) {
    const auto news = toolNews({.name = "a", .news = SeenDescription{"1", "sends", "{}"}});
    EXPECT_EQ(news, (ToolNews{.name = "a", .isNew = true, .after = "sends", .schemaAfter = "{}"}));
}

TEST(ToolNews, WhatIsPastIsToldSo) {
    auto tool = changed("reads", "sends");
    tool.isPast = true;
    EXPECT_TRUE(toolNews(tool).isPast);
}

TEST(ToolNews, NobodyIsShownInvisibleCharacters) {
    auto tool = changed("reads\u200b", "se\u202ends\n");
    tool.name = "a\u2066";
    EXPECT_EQ(toolNews(tool), (ToolNews{.name = "a", .before = "reads", .after = "sends "}));
}

TEST(ToolNews, OfLongTextsThePartIsShownWhereTheyDiffer) {
    std::string common;
    while (common.size() < 20'000) common += "ř";
    const auto news = toolNews(changed("", "", common + "[1]" + common, common + "[2]" + common));
    for (const auto& [text, mark] :
         {std::pair(news.schemaBefore, "[1]"), std::pair(news.schemaAfter, "[2]")}) {
        EXPECT_TRUE(text.contains(mark));
        EXPECT_TRUE(text.starts_with("…ř")) << text.substr(0, 8);
        EXPECT_TRUE(text.ends_with("ř…"));
        EXPECT_LE(text.size(), ToolNews::longest + 6);
    }
}

} // namespace
} // namespace morvex
