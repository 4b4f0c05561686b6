#include "platform/linux/SysfsPower.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace morvex {
namespace {

using Supply = std::map<std::string, std::string>;

bool onMains(const std::vector<Supply>& supplies) {
    TemporaryFolder folder;
    int number = 0;
    for (const auto& supply : supplies) {
        auto path = folder.path() / ("supply" + std::to_string(number++));
        std::filesystem::create_directory(path);
        for (const auto& [name, value] : supply) std::ofstream(path / name) << value << '\n';
    }
    return SysfsPower(folder.path()).onMains();
}

const Supply adapterOn{{"type", "Mains"}, {"online", "1"}};
const Supply adapterOff{{"type", "Mains"}, {"online", "0"}};
const Supply portOn{{"type", "USB"}, {"online", "1"}};
const Supply programmablePortOn{{"type", "USB"}, {"online", "2"}};
const Supply portOff{{"type", "USB"}, {"online", "0"}};
const Supply discharging{{"type", "Battery"}, {"status", "Discharging"}, {"scope", "System"}};
const Supply charging{{"type", "Battery"}, {"status", "Charging"}};
const Supply full{{"type", "Battery"}, {"status", "Full"}};
const Supply mouse{{"type", "Battery"}, {"status", "Discharging"}, {"scope", "Device"}};
const Supply nameless{{"online", "1"}};

struct Case {
    const char* name;
    std::vector<Supply> supplies;
    bool mains;
};

TEST(SysfsPower, TellsMainsFromBattery) {
    const std::vector<Case> cases = {
        {"a desktop computer lists nothing", {}, true},
        {"a desktop computer with a wireless mouse", {mouse}, true},
        {"the adapter is in", {adapterOn, charging}, true},
        {"the adapter is in while the battery drains under load", {adapterOn, discharging}, true},
        {"the adapter is out", {adapterOff, discharging}, false},
        {"the adapter is out and the battery still calls itself full", {adapterOff, full}, false},
        {"a battery that lists no adapter discharges", {discharging}, false},
        {"a battery that lists no adapter charges", {charging}, true},
        {"one of two batteries discharges", {adapterOff, full, discharging}, false},
        {"a charger on a USB port", {adapterOff, portOn, charging}, true},
        {"a charger on a USB port with a programmable voltage", {programmablePortOn, full}, true},
        {"a USB port that feeds a telephone", {adapterOff, portOn, discharging}, false},
        {"empty USB ports", {portOff, portOff, full}, false},
        {"an adapter that is off without any battery", {adapterOff}, true},
        {"a mouse and an adapter that is out", {mouse, adapterOff, discharging}, false},
        {"supplies that do not say what they are", {nameless}, false},
    };
    for (const auto& row : cases) EXPECT_EQ(onMains(row.supplies), row.mains) << row.name;
}

TEST(SysfsPower, AListThatCannotBeReadCountsAsBattery) {
    TemporaryFolder folder;
    EXPECT_FALSE(SysfsPower(folder.path() / "missing").onMains());
}

} // namespace
} // namespace morvex
