#include "tests/model/TwoParties.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace morvex {

namespace {

using namespace std::chrono_literals;
using Kind = ModelEvent::Kind;
using Way = ModelWire::Way;

/// Few, so that most changes concern records that were changed before.
constexpr int mostRecords = 4;

/// Enough to replay a whole session from its hello on.
constexpr std::size_t mostRepeated = 8;

Task<void> ignoreEnd(Task<Result<MorvexNote>> change) {
    (void)co_await std::move(change);
}

std::string title(unsigned which) {
    static const std::array<std::string, 3> titles{"Nákup", "Auto", "nakup"};
    return titles.at(which % titles.size());
}

/// Events that need a user at the Mac.
bool isByPerson(Kind kind) {
    return kind == Kind::editOnMac || kind == Kind::pair || kind == Kind::giveUpPairing ||
           kind == Kind::unpairOnMac;
}

} // namespace

bool TwoParties::happenToWires(const ModelEvent& event) {
    const std::chrono::milliseconds someTime(event.amount);
    auto& device = event.which % 2 == 0 ? mac_.network : phone_.network;
    switch (event.kind) {
    case Kind::flow:
        flow();
        return true;
    case Kind::trickle:
        trickle(event.which * 1000 + event.amount);
        return true;
    case Kind::wait:
        pass(someTime * (event.which % 3 == 0 ? 200 : 10), true);
        return true;
    case Kind::delay:
        pass(someTime * (event.which % 3 == 0 ? 35 : 2), false);
        return true;
    case Kind::network:
        device.isReachable = event.amount % 3 != 0;
        return true;
    case Kind::loseReply:
        device.losesReply = true;
        return true;
    case Kind::restartRelay:
        relay_.restart();
        return true;
    case Kind::skew:
        skew(event);
        return true;
    default:
        return event.isOfWire() && meddle(event);
    }
}

bool TwoParties::happenToMac(const ModelEvent& event) {
    if (isByPerson(event.kind)) mac_.wake();
    switch (event.kind) {
    case Kind::editOnMac:
        editOnMac(event);
        return true;
    case Kind::agentWorks:
        if (!mac_.isAsleep()) event.amount % 2 == 0 ? mac_.agentSpeaks() : mac_.agentEnds();
        return true;
    case Kind::holdDisk:
        isDiskHeld_ = event.which % 3 == 0;
        return true;
    case Kind::restartMac:
        mac_.stop();
        mac_.start();
        return true;
    case Kind::crash:
        crash(event);
        return true;
    case Kind::sleep:
        event.which % 2 == 0 ? fallAsleep(event) : mac_.wake();
        return true;
    case Kind::pair:
        pair();
        return true;
    case Kind::giveUpPairing:
        giveUpPairing();
        return true;
    case Kind::unpairOnMac:
        if (event.amount % 4 == 0) mac_.companion().parovani().odvolat();
        return true;
    default:
        return false;
    }
}

void TwoParties::happenToPhone(const ModelEvent& event) {
    if (event.kind == Kind::restartPhone) startShell();
    if (event.kind == Kind::syncOnPhone) phone_.start({"notes", "sync"});
    if (event.kind == Kind::writeOffline && mayCreate())
        phone_.start({"--offline", "notes", "create", "Auto", "offline"});
    if (event.kind == Kind::unpairOnPhone && event.amount % 4 == 0) phone_.start({"unpair"});
    // The remaining events are typed.
    if (!phone_.isShell()) return;
    if (event.kind == Kind::editOnPhone) editOnPhone(event);
    if (event.kind == Kind::summarize && mayCreate())
        phone_.type("summaries send Den \"summary " + std::to_string(++written_) + "\"");
    if (event.kind == Kind::callNote) call(mayCreate() ? Tool::note : Tool::file);
    if (event.kind == Kind::callFile) call(Tool::file);
    if (event.kind == Kind::callProgram) call(Tool::program);
    if (event.kind == Kind::callAgent) call(mayCreate() ? Tool::agent : Tool::program);
}

bool TwoParties::meddle(const ModelEvent& event) {
    if (relay_.wires() == 0) return true;
    auto& wire = relay_.wire(event.which / 2 % relay_.wires());
    const auto way = event.which % 2 == 0 ? Way::toRelay : Way::toDevice;
    auto& frames = wire.frames(way);
    const auto at = frames.empty() ? 0 : event.amount % frames.size();
    const auto place = frames.begin() + static_cast<std::ptrdiff_t>(at);
    if (event.kind == Kind::cut) wire.cut();
    if (event.kind == Kind::loseRelay) wire.loseRelay();
    if (event.kind == Kind::stall) wire.stall();
    if (event.kind == Kind::drop && !frames.empty()) frames.erase(place);
    if (event.kind == Kind::duplicate && !frames.empty()) frames.push_back(*place);
    if (event.kind == Kind::reorder && at > 0) std::swap(frames[at], frames[at - 1]);
    if (event.kind != Kind::replay) return true;
    // Taken from this connection or an older one: the operator of the relay may have kept all frames.
    const auto& said = wire.ledger().said(way);
    const auto from = said.empty() ? 0 : event.amount % said.size();
    const auto count = std::min(said.size() - from, mostRepeated);
    frames.insert(frames.end(), said.begin() + static_cast<std::ptrdiff_t>(from),
                  said.begin() + static_cast<std::ptrdiff_t>(from + count));
    return true;
}

void TwoParties::crash(const ModelEvent& event) {
    const auto farewell =
        event.amount % 2 == 0 ? ModelRelay::Farewell::noticed : ModelRelay::Farewell::unnoticed;
    if (event.which % 2 == 0) {
        relay_.loseDevice(ModelWire::Owner::mac, farewell);
        mac_.crash();
        mac_.start();
    } else {
        relay_.loseDevice(ModelWire::Owner::phone, farewell);
        phone_.crash();
        startShell();
    }
}

void TwoParties::fallAsleep(const ModelEvent& event) {
    mac_.fallAsleep();
    // The last frames it sent may still get through.
    if (event.amount % 2 == 0) flow();
    relay_.setAsleep(ModelWire::Owner::mac, true);
}

void TwoParties::skew(const ModelEvent& event) {
    // With less than half a minute between the clocks the two still accept each other's messages.
    if (event.which % 2 == 0 && mac_.isAsleep()) return;
    const auto most = conduct_ == RelayConduct::honest ? 14s : 4000s;
    auto& clock = event.which % 2 == 0 ? mac_.clock : phone_.clock;
    clock.setWallClock(relayClock_.now() + most * (static_cast<int>(event.amount) - 500) / 500);
}

bool TwoParties::mayCreate() {
    if (records_ == mostRecords) return false;
    ++records_;
    return true;
}

void TwoParties::editOnMac(const ModelEvent& event) {
    auto& notes = mac_.features().records.poznamky();
    const auto begin = [this](auto change) { executor_.start(ignoreEnd(std::move(change))); };
    const auto body = "mac " + std::to_string(++written_);
    if (event.amount % 5 == 0)
        begin(notes.smazat(title(event.which)));
    else if ((event.amount % 5 == 1 || notes.notes().empty()) && mayCreate())
        begin(notes.vytvorit(title(event.which), body));
    else
        begin(notes.upravit(title(event.which), title(event.which / 3), body));
}

void TwoParties::editOnPhone(const ModelEvent& event) {
    const auto body = " \"phone " + std::to_string(++written_) + "\"";
    if (event.amount % 5 == 0)
        phone_.type("notes delete " + title(event.which));
    else if (event.amount % 5 == 1 && mayCreate())
        phone_.type("notes create " + title(event.which) + body);
    else
        phone_.type("notes edit " + title(event.which) + body + " " + title(event.which / 3));
}

void TwoParties::call(Tool tool) {
    const auto name = "call-" + std::to_string(calls_.size());
    calls_.push_back({tool, name, ids_.uuid()});
    if (tool == Tool::note) phone_.type(R"(call mac.notes.create {"title":")" + name + R"(","body":"x"})");
    if (tool == Tool::file) phone_.type(R"(call mac.files.write {"path":")" + name + R"(","content":"x"})");
    if (tool == Tool::program)
        phone_.type(R"(call mac.terminal.run {"program":"ls","args":[")" + name + R"("]})");
    if (tool == Tool::agent)
        phone_.type(R"(call mac.codex.run {"instruction":")" + name + R"(","work_item_id":")" +
                    calls_.back().workItem.text() + R"("})");
}

void TwoParties::pair() {
    mac_.companion().parovani().zacitParovani();
    run();
    const auto& state = mac_.companion().stav().parovani.value();
    if (const auto* waiting = state.as<StavParovani::CekamNaTelefon>())
        phone_.start({"--yes", "pair", waiting->qr.c_str()});
}

void TwoParties::giveUpPairing() {
    // Without a pairing in progress there is nothing to cancel; the call would only renew the link.
    if (!mac_.companion().stav().parovani.value().as<StavParovani::Necinne>())
        mac_.companion().parovani().zrusitParovani();
}

void TwoParties::agree() {
    const auto& state = mac_.companion().stav().parovani.value();
    if (const auto* shown = state.as<StavParovani::OverCislo>())
        mac_.companion().parovani().potvrditCislo(shown->cislo);
}

} // namespace morvex
