#include "tests/model/ModelEvent.h"

#include <array>
#include <string_view>

namespace morvex {

namespace {

using Kind = ModelEvent::Kind;

struct Row {
    Kind kind;
    std::string_view name;
    int share; ///< weight among all events
};

constexpr std::array rows{
    Row{Kind::flow, "flow", 20},
    Row{Kind::trickle, "trickle", 16},
    Row{Kind::wait, "wait", 10},
    Row{Kind::delay, "delay", 3},
    Row{Kind::editOnMac, "editOnMac", 16},
    Row{Kind::editOnPhone, "editOnPhone", 16},
    Row{Kind::summarize, "summarize", 2},
    Row{Kind::callNote, "callNote", 6},
    Row{Kind::callFile, "callFile", 8},
    Row{Kind::callProgram, "callProgram", 8},
    Row{Kind::callAgent, "callAgent", 5},
    Row{Kind::agentWorks, "agentWorks", 6},
    Row{Kind::syncOnPhone, "syncOnPhone", 1},
    Row{Kind::writeOffline, "writeOffline", 1},
    Row{Kind::holdDisk, "holdDisk", 2},
    Row{Kind::cut, "cut", 5},
    Row{Kind::loseRelay, "loseRelay", 3},
    Row{Kind::stall, "stall", 2},
    Row{Kind::network, "network", 3},
    Row{Kind::loseReply, "loseReply", 1},
    Row{Kind::restartRelay, "restartRelay", 2},
    Row{Kind::restartMac, "restartMac", 3},
    Row{Kind::restartPhone, "restartPhone", 4},
    Row{Kind::crash, "crash", 3},
    Row{Kind::sleep, "sleep", 3},
    Row{Kind::skew, "skew", 2},
    Row{Kind::pair, "pair", 2},
    Row{Kind::giveUpPairing, "giveUpPairing", 1},
    Row{Kind::unpairOnMac, "unpairOnMac", 1},
    Row{Kind::unpairOnPhone, "unpairOnPhone", 1},
    Row{Kind::drop, "drop", 4},
    Row{Kind::duplicate, "duplicate", 4},
    Row{Kind::reorder, "reorder", 4},
    Row{Kind::replay, "replay", 4},
};

const Row& draw(Dice& dice) {
    static const int all = [] {
        int sum = 0;
        for (const auto& row : rows) sum += row.share;
        return sum;
    }();
    int left = dice.below(all);
    for (const auto& row : rows) {
        left -= row.share;
        if (left < 0) return row;
    }
    return rows.back();
}

} // namespace

std::string ModelEvent::text() const {
    for (const auto& row : rows)
        if (row.kind == kind)
            return std::string(row.name) + " " + std::to_string(which) + " " + std::to_string(amount);
    return {};
}

std::vector<ModelEvent> drawEvents(Dice& dice, std::size_t count, RelayConduct conduct) {
    std::vector<ModelEvent> events;
    while (events.size() < count) {
        const auto kind = draw(dice).kind;
        if (conduct == RelayConduct::honest && kind >= Kind::drop) continue;
        const auto which = static_cast<unsigned>(dice.below(1000));
        events.push_back({kind, which, static_cast<unsigned>(dice.below(1000))});
    }
    return events;
}

} // namespace morvex
