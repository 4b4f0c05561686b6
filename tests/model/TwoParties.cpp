#include "tests/model/TwoParties.h"

#include "shared/wire/Json.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace morvex {

namespace {

using namespace std::chrono_literals;
using Way = ModelWire::Way;

/// Shared, since generating keys takes longer than the rest of a short history.
std::shared_ptr<const DeviceIdentity> identityOf(ModelWire::Owner owner) {
    static const std::array identities{std::make_shared<const DeviceIdentity>(DeviceIdentity::generate()),
                                       std::make_shared<const DeviceIdentity>(DeviceIdentity::generate())};
    return identities.at(static_cast<std::size_t>(owner));
}

std::filesystem::path made(std::filesystem::path folder) {
    std::filesystem::create_directory(folder);
    return folder;
}

} // namespace

TwoParties::TwoParties(std::uint64_t seed, const std::filesystem::path& folder, RelayConduct conduct)
    : conduct_(conduct),
      ids_(seed),
      mac_(executor_, relay_, identityOf(ModelWire::Owner::mac), made(folder / "mac"), seed + 1),
      phone_(executor_, relay_, identityOf(ModelWire::Owner::phone), made(folder / "phone"), seed + 2) {
    mac_.start();
    startShell();
    pairAnew();
    startShell();
    flow();
}

void TwoParties::happen(const ModelEvent& event) {
    if (!happenToWires(event) && !happenToMac(event)) happenToPhone(event);
    run();
    if (event.which % 3 == 0 && !mac_.isAsleep()) agree();
    if (!phone_.isRunning() && event.amount % 3 != 0) startShell();
    takeNote();
}

void TwoParties::run() {
    while (executor_.runUntilIdle() + (isDiskHeld_ ? 0 : mac_.runDisk()) > 0) continue;
}

void TwoParties::flow() {
    do {
        run();
        if (isResting_) noteAgreement();
    } while (isResting_ ? relay_.passOneEach() : relay_.passAll());
}

void TwoParties::trickle(unsigned seed) {
    for (auto left = 1 + seed % 8; left > 0 && relay_.wires() > 0; --left) {
        seed = seed * 1'103'515'245 + 12'345;
        auto& wire = relay_.wire((seed >> 16) % relay_.wires());
        wire.pass((seed >> 8) % 2 == 0 ? Way::toRelay : Way::toDevice);
        run();
    }
}

void TwoParties::pass(Clock::Duration time, bool isFlowing) {
    for (int steps = 0; time > Clock::Duration::zero() && steps < 200; ++steps) {
        auto step = time;
        for (const auto next : {mac_.untilNext(), phone_.clock.untilNext()})
            if (next) step = std::min(step, std::max(*next, Clock::Duration(1)));
        mac_.advance(step);
        phone_.clock.advance(step);
        relayClock_.advance(step);
        time -= step;
        isFlowing ? flow() : run();
    }
}

void TwoParties::startShell() {
    phone_.start({"--json", "--approve", "yes", "shell"});
}

void TwoParties::takeNote() {
    takeNote(mac_.savedNotes());
    takeNote(phone_.records().notes());
}

void TwoParties::takeNote(const std::vector<MorvexNote>& notes) {
    for (const auto& note : notes) {
        const std::pair order(note.revision, wholeSeconds(note.updatedAt));
        auto& latest = latest_[note.id];
        if (order < latest.order) continue;
        if (order > latest.order) latest = {order, {}};
        auto text = encode(note);
        if (std::ranges::find(latest.texts, text) != latest.texts.end()) continue;
        latest.texts.push_back(std::move(text));
        ++versionsSeen_;
    }
}

} // namespace morvex
