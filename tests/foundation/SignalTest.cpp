#include "foundation/Signal.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace morvex {
namespace {

TEST(Signal, CallsThoseWhoAreConnectedInTheirOrder) {
    Signal<std::string> signal;
    std::vector<std::string> told;
    const auto first = signal.connect([&](const std::string& text) { told.push_back("first " + text); });
    const auto second = signal.connect([&](const std::string& text) { told.push_back("second " + text); });
    signal.tell("news");
    EXPECT_EQ(told, (std::vector<std::string>{"first news", "second news"}));
}

TEST(Signal, AConnectionThatHasEndedIsCalledNoMore) {
    Signal<> signal;
    int told = 0;
    {
        const auto connection = signal.connect([&] { ++told; });
        signal.tell();
    }
    signal.tell();
    auto connection = signal.connect([&] { ++told; });
    connection = {};
    signal.tell();
    EXPECT_EQ(told, 1);
}

TEST(Signal, ACallbackMayEndItselfAndThoseBehindItAndConnectOthers) {
    Signal<> signal;
    std::vector<std::string> told;
    Connection own;
    Connection behind;
    Connection added;
    own = signal.connect([&] {
        told.push_back("first");
        own = {};
        behind = {};
        added = signal.connect([&] { told.push_back("added"); });
    });
    behind = signal.connect([&] { told.push_back("second"); });
    signal.tell();
    EXPECT_EQ(told, std::vector<std::string>{"first"}) << "who comes now hears of the next";
    signal.tell();
    EXPECT_EQ(told, (std::vector<std::string>{"first", "added"}));
}

TEST(Signal, IsHeardAsLongAsAConnectionLives) {
    Signal<> signal;
    EXPECT_FALSE(signal.isHeard());
    Connection first = signal.connect([] {});
    Connection second = signal.connect([] {});
    first = {};
    EXPECT_TRUE(signal.isHeard());
    second = {};
    EXPECT_FALSE(signal.isHeard());
}

TEST(Signal, ACallbackMayEndTheSignal) {
    std::optional<Signal<>> signal(std::in_place);
    int told = 0;
    const auto first = signal->connect([&] {
        ++told;
        signal.reset();
    });
    const auto second = signal->connect([&] { ++told; });
    signal->tell();
    EXPECT_EQ(told, 2) << "the others hear of this one still";
}

TEST(Signal, AConnectionMayOutliveItsSignal) {
    Connection connection;
    {
        Signal<> signal;
        connection = signal.connect([] {});
    }
    connection = {};
}

} // namespace
} // namespace morvex
