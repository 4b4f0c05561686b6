#include "shared/wire/Json.h"
#include "tests/app/companion/AgentHarness.h"

#include <algorithm>

namespace morvex {
namespace {

using Names = std::vector<std::string>;

/// The type that a property's schema tells, as `ArgumentRow` names it: an "array" there is one of texts.
std::string typeOf(const boost::json::object& property) {
    const std::string type(property.at("type").as_string());
    if (type != "array") return type;
    const auto element = typeOf(property.at("items").as_object());
    return element == "string" ? type : "array of " + element;
}

/// What the schema of a tool tells of, in its order.
std::vector<ArgumentRow> toldOf(const ToolDescriptor& tool) {
    const auto schema = parseJson(tool.parametersJSON).value().as_object();
    const auto* listed = schema.if_contains("required");
    const auto required = listed ? listed->as_array() : boost::json::array();
    std::vector<ArgumentRow> rows;
    for (const auto& [name, property] : schema.at("properties").as_object()) {
        const bool isRequired = std::ranges::find(required, boost::json::value(name)) != required.end();
        rows.push_back({name, typeOf(property.as_object()), isRequired});
    }
    return rows;
}

class OfferTest : public AgentHarness {
  protected:
    Names offered() {
        Names names;
        for (auto& tool : companion->toolGate().nabizeneNastroje()) names.push_back(std::move(tool.name));
        return names;
    }

    void turnOn(Integration integration) {
        EXPECT_TRUE(ended(companion->integrations().turnOn(integration)).has_value());
    }
};

TEST_F(OfferTest, EverySwitchTakesItsOwnToolsOffAndNoOthers) {
    struct Row {
        std::vector<Integration> off;
        Names missing;
    };

    using enum Integration;
    const std::vector<Row> rows{
        {{calendar},
         {"mac.calendar.calendars", "mac.calendar.list", "mac.calendar.create", "mac.calendar.update",
          "mac.calendar.delete"}},
        {{reminders}, {"mac.reminders.list", "mac.reminders.create", "mac.reminders.complete"}},
        {{contacts}, {"mac.contacts.find"}},
        {{notes}, {"mac.notes.search", "mac.notes.create", "mac.notes.update", "mac.notes.delete"}},
        {{customApps}, {}},
        {{appleMail}, {}},
        {{smtp}, {}},
        {{codex}, {"mac.codex.run", "mac.codex.cancel"}},
        {{claude}, {"mac.claude.run", "mac.claude.cancel"}},
        {{codex, claude},
         {"mac.codex.run", "mac.codex.cancel", "mac.claude.run", "mac.claude.cancel", "mac.agent.rename"}},
        {{files}, {"mac.files.search", "mac.files.read", "mac.files.write"}},
        {{terminal}, {"mac.terminal.run"}},
        {{webSearch}, {}},
    };
    calendars.has = {{"1", "Práce", "Doma", true}};
    startWithFolder();
    const auto all = offered();
    EXPECT_EQ(all.size(), 23U);
    for (const auto& [off, missing] : rows) {
        auto left = all;
        for (const auto& name : missing) EXPECT_EQ(std::erase(left, name), 1U) << name;
        for (auto integration : off) companion->integrations().turnOff(integration);
        EXPECT_EQ(offered(), left) << testing::PrintToString(missing);
        for (auto integration : off) turnOn(integration);
        EXPECT_EQ(offered(), all) << testing::PrintToString(missing);
    }
}

TEST_F(OfferTest, EachToolReadsWhatItsSchemaTells) {
    make();
    const auto tools = companion->context().tools.all();
    EXPECT_EQ(tools.size(), 28U);
    for (const auto& tool : tools)
        EXPECT_EQ(tool->arguments, toldOf(tool->descriptor)) << tool->descriptor.name;
}

} // namespace
} // namespace morvex
