#include "shared/wire/Json.h"
#include "tests/model/TwoParties.h"

#include <algorithm>
#include <chrono>
#include <set>

namespace morvex {

namespace {

using namespace std::chrono_literals;

/// Longer than any wait of a device that lost its connection.
constexpr auto longestWait = 40s;
constexpr auto restStep = 2s;

std::set<std::string> texts(const auto& records) {
    std::set<std::string> found;
    for (const auto& record : records) found.insert(encode(record));
    return found;
}

std::string told(const char* whose, const std::set<std::string>& records) {
    std::string text;
    for (const auto& record : records) text += std::string(whose) + " " + record + "\n";
    return text;
}

} // namespace

std::string TwoParties::comeToRest() {
    mendAll();
    workOff();
    relay_.countAnew();
    isResting_ = true;
    // Meanwhile waits for answers end, and each end notices that its connection is dead.
    restFor(2min);
    if (!arePaired() && !pairAnew()) return "the two cannot be paired again\n" + states();
    for (int i = 0; i == 0 || (i < 4 && !areReady()); ++i) {
        if (!phone_.isShell()) startShell();
        restFor(longestWait);
    }
    if (!areReady()) return "the two do not meet again\n" + states();
    takeNote();
    const auto wrong = difference() + unconfirmed() + lostChange() + wrongEffect();
    return wrong.empty() ? "" : wrong + states();
}

void TwoParties::mendAll() {
    for (auto* device : {&mac_.network, &phone_.network}) {
        device->isReachable = true;
        device->losesReply = false;
    }
    mac_.wake();
    for (auto* clock : {&mac_.clock, &phone_.clock}) clock->setWallClock(relayClock_.now());
    isDiskHeld_ = false;
    mac_.agentEnds();
    giveUpPairing();
    if (!phone_.isShell()) startShell();
    phone_.forgetLines();
    // Nobody misses the frames that a faulty relay removed until the next connection, so force one.
    if (conduct_ == RelayConduct::faulty) relay_.restart();
}

/// Delivers what was sent before the faults ended, and what follows from it at once. The quiet period begins
/// after that.
void TwoParties::workOff() {
    for (int hops = 0; hops < 2; ++hops) {
        run();
        relay_.passUnderWay();
    }
    run();
}

void TwoParties::restFor(std::chrono::seconds time) {
    for (; time > 0s; time -= restStep) pass(restStep, true);
}

void TwoParties::noteAgreement() {
    if (!areReady() || !difference().empty())
        messagesToRest_.reset();
    else if (!messagesToRest_)
        messagesToRest_ = messages();
}

bool TwoParties::pairAnew() {
    pair();
    pass(1s, true);
    agree();
    pass(1s, true);
    return arePaired();
}

bool TwoParties::arePaired() {
    const auto mac = phone_.mac();
    const auto phone = mac_.phone();
    return mac && phone && mac->pairID == phone->pairID;
}

bool TwoParties::areReady() {
    return mac_.isReady() && phone_.isShell();
}

std::string TwoParties::difference() {
    const auto here = texts(mac_.features().records.poznamky().vsechny());
    const auto there = texts(phone_.records().notes());
    const auto kept = texts(mac_.features().records.souhrny().summaries());
    const auto sent = texts(phone_.records().summaries());
    std::string differing;
    if (here != there) differing += told("mac  ", here) + told("phone", there);
    if (!std::ranges::includes(kept, sent)) differing += told("summary of the phone", sent);
    const auto tasks = texts(phone_.tasks().items());
    for (const auto& ukol : mac_.features().agents.historie().polozky())
        if (const auto text = encode(asWorkItem(ukol)); !tasks.contains(text))
            differing += "task " + text + "\n";
    return differing;
}

std::string TwoParties::unconfirmed() {
    std::string open;
    for (const auto& id : phone_.records().unconfirmed()) open += "unconfirmed " + id.text() + "\n";
    for (const auto& ukol : mac_.features().agents.historie().nedorucene())
        open += "undelivered " + encode(asWorkItem(ukol)) + "\n";
    return open;
}

std::string TwoParties::lostChange() {
    std::string lost;
    const auto& kept = mac_.features().records.poznamky().vsechny();
    for (const auto& note : kept) {
        const auto& latest = latest_.at(note.id);
        if (std::ranges::find(latest.texts, encode(note)) == latest.texts.end())
            lost += "lost " + latest.texts.front() + "\nby   " + encode(note) + "\n";
    }
    for (const auto& [id, latest] : latest_)
        if (std::ranges::find(kept, id, &MorvexNote::id) == kept.end())
            lost += "gone " + latest.texts.front() + "\n";
    return lost;
}

std::string TwoParties::wrongEffect() {
    const auto answers = phone_.answers();
    std::string wrong;
    for (const auto& call : calls_) {
        const auto count = effects(call);
        const bool isKnown = count > 0 || mac_.features().agents.historie().ukol(call.workItem);
        const bool isTold = isAnswered(call, answers);
        answeredCalls_ += isTold;
        doneCalls_ += count > 0;
        if (count > 1) wrong += call.name + " was carried out " + std::to_string(count) + " times\n";
        if (isTold && !isKnown) wrong += call.name + " was answered and never carried out\n";
    }
    return wrong;
}

std::size_t TwoParties::effects(const Call& call) {
    if (call.tool == Tool::program || call.tool == Tool::agent) return mac_.starts(call.name);
    if (call.tool == Tool::file) return mac_.writes(call.name);
    const auto& notes = mac_.features().records.poznamky().vsechny();
    return static_cast<std::size_t>(std::ranges::count(notes, call.name, &MorvexNote::title));
}

/// An agent's answer names its work item. It shows that the work item was accepted, and the task history
/// contains it even if the computer ended before the agent began.
bool TwoParties::isAnswered(const Call& call, const std::string& answers) {
    return answers.contains("\"" + (call.tool == Tool::agent ? call.workItem.text() : call.name) + "\"");
}

std::string TwoParties::states() {
    auto& state = mac_.companion().stav();
    return "mac: " + state.dostupnost.value().popis(DeviceRole::phone, mac_.clock.now()).czech() + ", " +
           state.potiz.value().value_or(Sentence("no trouble")).czech() + "\nphone: " + phone_.notes();
}

std::size_t TwoParties::messages() const {
    return std::max(relay_.messagesTo(ModelWire::Owner::mac), relay_.messagesTo(ModelWire::Owner::phone));
}

} // namespace morvex
