#include "app/customapps/CustomTools.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

const StoredApp weather{"mac-ab12cd34-0000", "Počasí", "https://a", true, StoredApp::fromMac};

ToolList list(const std::string& tools) {
    return toolList(parseJson(R"({"tools":)" + tools + "}").value().as_object());
}

std::vector<CustomTool> toolsOf(const std::string& tools, const StoredApp& app = weather) {
    return customTools(app, list(tools), [](const std::string&) { return false; });
}

std::vector<std::string> namesOf(const std::vector<CustomTool>& tools) {
    std::vector<std::string> names;
    for (const auto& tool : tools) names.push_back(tool.descriptor.name);
    return names;
}

using Names = std::vector<std::string>;

std::string named(const std::string& name, const std::string& more = "") {
    return R"({"name":")" + name + "\"" + more + "}";
}

TEST(CustomTools, AToolOfAnAppHasANameOfItsOwn) {
    struct Row {
        const char* app;
        const char* tool;
        const char* name;
    };

    for (const auto& row : {
             Row{"mac-ab12cd34", "weather-now", "mac.custom.macab12c.weather_now"},
             Row{"MAC-AB12CD34-5", "a.b/c d", "mac.custom.macab12c.a_b_c_d"},
             Row{"p", "získej", "mac.custom.p.získej"},
             Row{"ČÁP", "x", "mac.custom.čáp.x"},
             Row{"---", "../../etc", "mac.custom..______etc"},
         })
        EXPECT_EQ(customToolName(row.app, row.tool), row.name);
}

TEST(CustomTools, ALongNameIsCut) {
    const std::string prefix = "mac.custom.macab12c.";
    const std::string rest(62 - prefix.size(), 'x');
    EXPECT_EQ(customToolName(weather.id, rest), prefix + rest);
    EXPECT_EQ(customToolName(weather.id, rest + "y"), prefix + rest) << "63 characters";
    EXPECT_EQ(customToolName(weather.id, rest + "yz"), prefix + rest);
    std::string marks = "a";
    for (int i = 0; i < 2'000; ++i) marks += "\u0301";
    EXPECT_LE(customToolName(weather.id, marks).size(), 62U * 8) << "one character of any length";
}

TEST(CustomTools, ANameThatIsTakenGetsItsPosition) {
    EXPECT_EQ(namesOf(toolsOf("[" + named("a b") + "," + named("a-b") + "]")),
              Names({"mac.custom.macab12c.a_b", "mac.custom.macab12c.a_b.2"}));
    EXPECT_EQ(namesOf(toolsOf("[1,{},{\"name\":7}," + named("") + "," + named("x") + "," + named("x") + "]")),
              Names({"mac.custom.macab12c.x", "mac.custom.macab12c.x.6"}))
        << "what is left out counts";
    const std::string taken = "mac.custom.macab12c.x";
    const auto tools = customTools(weather, list("[" + named("x") + "]"),
                                   [&](const std::string& name) { return name == taken; });
    EXPECT_EQ(namesOf(tools), Names{taken + ".1"});
}

TEST(CustomTools, ThePositionIsNotCutOff) {
    const std::string longName(80, 'x');
    const auto names = namesOf(toolsOf("[" + named(longName) + "," + named(longName) + "]"));
    EXPECT_EQ(names[0].size(), 62U);
    EXPECT_EQ(names[1], names[0] + ".2");
}

TEST(CustomTools, ANameThatIsTakenTwiceIsLeftOut) {
    const auto tools =
        customTools(weather, list("[" + named("x") + "," + named("y") + "]"), [](const std::string& name) {
            return name == "mac.custom.macab12c.x" || name == "mac.custom.macab12c.x.1";
        });
    EXPECT_EQ(namesOf(tools), Names{"mac.custom.macab12c.y"});
}

TEST(CustomTools, TheSummaryNamesTheAppAndAlwaysEndsWithAFullStop) {
    const auto summary = [](const std::string& more) {
        return toolsOf("[" + named("now", more) + "]").at(0).descriptor.summary;
    };
    EXPECT_EQ(summary(R"(,"description":" Řekne počasí ")"), "Počasí: Řekne počasí.");
    EXPECT_EQ(summary(R"(,"description":"Tells.")"), "Počasí: Tells..");
    EXPECT_EQ(summary(R"(,"description":"  ")"), "Počasí: now.");
    EXPECT_EQ(summary(R"(,"description":7)"), "Počasí: now.");
    EXPECT_EQ(summary(""), "Počasí: now.");
}

TEST(CustomTools, NothingInvisibleReachesASummary) {
    const auto tools = toolsOf(R"([{"name":"now","description":"a\u200bb\u202ec\n\u001b[2Jd"}])");
    EXPECT_EQ(tools.at(0).descriptor.summary, "Počasí: abc  [2Jd.");
    auto app = weather;
    app.name = "Po\u200Bčasí\n";
    EXPECT_EQ(toolsOf("[" + named("x") + "]", app).at(0).descriptor.summary, "Počasí : x.");
}

TEST(CustomTools, TheSchemaIsThatOfTheServerOrAny) {
    const auto schema = [](const std::string& more) {
        return toolsOf("[" + named("now", more) + "]").at(0).descriptor.parametersJSON;
    };
    const std::string any = R"({"type":"object","properties":{}})";
    EXPECT_EQ(schema(R"(,"inputSchema":{"type":"object","x":9007199254740993},"parameters":{"a":1})"),
              R"({"type":"object","x":9007199254740993})");
    EXPECT_EQ(schema(R"(,"inputSchema":[],"parameters":{"a":1})"), R"({"a":1})");
    EXPECT_EQ(schema(R"(,"inputSchema":"x","parameters":1)"), any);
    EXPECT_EQ(schema(""), any);
}

TEST(CustomTools, EveryToolIsAChangeWhateverItsServerSays) {
    const auto tool = toolsOf("[" + named("now", R"(,"annotations":{"readOnlyHint":true})") + "]").at(0);
    EXPECT_EQ(tool.descriptor.risk, ToolRisk::change);
    EXPECT_FALSE(tool.descriptor.streamsProgress);
    EXPECT_EQ(tool.remoteName, "now");
}

TEST(CustomTools, AToolThatIsTooLongIsLeftOutAndCounts) {
    using namespace customToolLimits;
    const auto described = [](std::size_t bytes) {
        return R"(,"description":")" + std::string(bytes, 'x') + "\"";
    };
    const auto schema = [](std::size_t bytes) {
        return R"(,"inputSchema":{"a":")" + std::string(bytes - 8, 'x') + "\"}";
    };
    const auto count = [](const std::string& tool) { return toolsOf("[" + tool + "]").size(); };
    EXPECT_EQ(count(named("a", described(longestDescription))), 1U);
    EXPECT_EQ(count(named("a", described(longestDescription + 1))), 0U);
    EXPECT_EQ(count(named("a", schema(longestSchema))), 1U);
    EXPECT_EQ(count(named("a", schema(longestSchema + 1))), 0U);
    EXPECT_EQ(count(named(std::string(longestName, 'a'))), 1U);
    EXPECT_EQ(count(named(std::string(longestName + 1, 'a'))), 0U);
    EXPECT_EQ(namesOf(toolsOf("[" + named("a", described(longestDescription + 1)) + "," + named("b") + "," +
                              named("b") + "]"))
                  .back(),
              "mac.custom.macab12c.b.3");
}

TEST(CustomTools, AnAppLendsABoundedNumberAndTheFirstStay) {
    std::string all = "[" + named("t0");
    for (int i = 1; i < 1'000; ++i) all += "," + named("t" + std::to_string(i));
    const auto names = namesOf(toolsOf(all + "]"));
    EXPECT_EQ(names.size(), customToolLimits::mostOfApp);
    EXPECT_EQ(names.back(), "mac.custom.macab12c.t255");
}

TEST(CustomTools, NoArrayIsNoTools) {
    EXPECT_TRUE(list("{}").empty());
    EXPECT_TRUE(toolList({}).empty());
}

TEST(CustomTools, InvisibleCharactersAreTakenOutOfTheTextsOfASchema) {
    const auto tools = toolsOf(
        R"([{"name":"a","description":"re\u200bads\n","inputSchema":{"title":"T\u202e","properties":)"
        R"({"x":{"description":"wh\u2066at\tis","enum":["\n"]},"description":{"$comment":"\u00adc"}}}}])");
    ASSERT_EQ(tools.size(), 1U);
    EXPECT_EQ(tools[0].descriptor.parametersJSON,
              R"({"title":"T","properties":{"x":{"description":"what is","enum":["\n"]},)"
              R"("description":{"$comment":"c"}}})");
    EXPECT_EQ(tools[0].seen.description, "reads ");
    EXPECT_EQ(tools[0].seen.schema.contains("\u202e"), false);
}

TEST(CustomTools, AToolWithInvisibleCharactersElsewhereInItsSchemaIsLeftOut) {
    for (const char* schema : {R"({"x\u200b":1})", R"({"default":"\u200b"})", R"({"enum":["\u202e"]})",
                               R"({"a":[{"b":[{"const":"\u2066"}]}]})"})
        EXPECT_TRUE(toolsOf(R"([{"name":"a","inputSchema":)" + std::string(schema) + "}]").empty()) << schema;
}

TEST(CustomTools, ANameHasAtMost256Bytes) {
    EXPECT_EQ(toolsOf("[" + named(std::string(256, 'x')) + "]").size(), 1U);
    EXPECT_TRUE(toolsOf("[" + named(std::string(257, 'x')) + "]").empty());
}

TEST(CustomTools, TheIdOfAnAppOfThePhoneIsFilteredToo) {
    EXPECT_EQ(customToolName("a b\n\u200bc", "x"), "mac.custom.a_b__c.x");
}

} // namespace
} // namespace morvex
