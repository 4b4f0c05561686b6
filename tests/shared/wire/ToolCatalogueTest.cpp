#include "shared/wire/ToolCatalogue.h"

#include "shared/wire/Json.h"
#include "shared/wire/MacToolName.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

namespace morvex {
namespace {

boost::json::array vectors() {
    std::ifstream file{MORVEX_SOURCE_DIR "/tests/vectors/tool-catalogue.json"};
    std::stringstream text;
    text << file.rdbuf();
    return parseJson(text.str()).value().as_array();
}

TEST(ToolCatalogue, IsTheListOfThePhoneByteForByte) {
    const auto expected = vectors();
    const auto& offered = ToolCatalogue::descriptors();
    ASSERT_EQ(offered.size(), expected.size());
    ASSERT_EQ(offered.size(), 28u);
    for (std::size_t index = 0; index < offered.size(); ++index)
        EXPECT_EQ(encode(offered[index]), encode(expected[index]));
}

TEST(ToolCatalogue, OffersEveryKnownNameButTheTwoReserved) {
    std::set<std::string_view> missing{MacToolName::allNames.begin(), MacToolName::allNames.end()};
    for (const auto& tool : ToolCatalogue::descriptors())
        EXPECT_EQ(missing.erase(tool.name), 1u) << tool.name;
    EXPECT_EQ(missing, (std::set{MacToolName::terminalCancel, MacToolName::appOpen}));
}

TEST(ToolCatalogue, RequiresOnlyParametersThatTheSchemaHas) {
    for (const auto& tool : ToolCatalogue::descriptors()) {
        const auto schema = parseJson(tool.parametersJSON).value();
        EXPECT_EQ(schema.at("type"), "object") << tool.name;
        const auto& properties = schema.at("properties").as_object();
        if (const auto* required = schema.as_object().if_contains("required"))
            for (const auto& name : required->as_array())
                EXPECT_TRUE(properties.contains(name.as_string())) << tool.name;
    }
}

TEST(ToolCatalogue, StreamsProgressOfTheAgentsAlone) {
    for (const auto& tool : ToolCatalogue::descriptors())
        EXPECT_EQ(tool.streamsProgress,
                  tool.name == MacToolName::codexRun || tool.name == MacToolName::claudeRun)
            << tool.name;
}

TEST(ToolCatalogue, FindsAToolByItsName) {
    ASSERT_NE(ToolCatalogue::find(MacToolName::mailSend), nullptr);
    EXPECT_EQ(ToolCatalogue::find(MacToolName::mailSend)->risk, ToolRisk::change);
    EXPECT_EQ(ToolCatalogue::find(MacToolName::appOpen), nullptr);
}

} // namespace
} // namespace morvex
