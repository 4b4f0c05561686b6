#include "bench/Measure.h"
#include "bench/NotesComputer.h"
#include "bench/NotesPhone.h"
#include "phone/PhoneRecords.h"
#include "platform/posix/base/AtomicFile.h"
#include "tests/support/AwaitedStores.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <vector>

// Measures how a phone delivers 10,000 notes of a kilobyte over a real relay: the time until the last one is
// acknowledged, the bytes written meanwhile and the duration of local calls, compared with writing the same
// bytes once. First for a phone that sends them one after the other, then for one that offers them as
// `morvex-phone` does.

namespace morvex {
namespace {

constexpr std::size_t noteCount = 10'000;
constexpr double million = 1e6;

std::vector<MorvexNote> kilobyteNotes(Clock& clock, Random& random) {
    std::vector<MorvexNote> notes;
    for (std::size_t i = 0; i < noteCount; ++i) {
        std::string body;
        while (body.size() < 1000) body += "Žluťoučký kůň pěl ódy, " + std::to_string(i) + ". ";
        notes.push_back({random.uuid(), "Poznámka " + std::to_string(i), std::move(body), clock.now(),
                         clock.now(), 1, std::nullopt});
    }
    return notes;
}

/// Bytes that this process has handed to write calls; sockets use others.
double writtenBytes() {
    std::ifstream counters("/proc/self/io");
    std::string name;
    for (double value = 0; counters >> name >> value;)
        if (name == "wchar:") return value;
    return 0;
}

/// A phone that sends its notes waiting only for the link.
class SendingPhone {
  public:
    SendingPhone(std::shared_ptr<SecureLink> link, std::vector<MorvexNote> notes, TaskScope& scope)
        : link_(std::move(link)), notes_(std::move(notes)), scope_(scope) {}

    Task<void> listen(std::stop_token stop) {
        while (auto event = co_await link_->udalosti().next(stop)) {
            if (std::holds_alternative<SecureLink::Pripraveno>(*event)) scope_.spawn(send());
            const auto* message = std::get_if<SecureLink::Zprava>(&*event);
            if (message && message->payload.as<MacPayload::NoteAck>()) ++acknowledged;
        }
    }

    std::atomic<bool> hasBegun = false;
    std::atomic<std::size_t> acknowledged = 0;

  private:
    Task<void> send() {
        hasBegun = true;
        for (const auto& note : notes_)
            (void)co_await link_->poslat({MacPayload::NoteUpdate{note}}, requestID(note));
    }

    std::shared_ptr<SecureLink> link_;
    std::vector<MorvexNote> notes_;
    TaskScope& scope_;
};

Task<void> endPhone(std::shared_ptr<SecureLink> link, TaskScope* scope) {
    co_await link->zastavit();
    scope->stop();
    co_await scope->join();
}

struct Measured {
    double seconds = 0;
    double bytes = 0;
    std::vector<double> statuses;
};

/// Measures from `hasBegun` to `hasEnded`, making local calls all the time.
Measured measure(Computer& computer, const std::function<bool()>& hasBegun,
                 const std::function<bool()>& hasEnded) {
    while (!hasBegun()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    Measured measured;
    const auto before = writtenBytes();
    measured.seconds = milliseconds([&] {
                           while (!hasEnded()) {
                               measured.statuses.push_back(computer.callLocally("mac.status", {}, "tools"));
                               std::this_thread::sleep_for(std::chrono::milliseconds(1));
                           }
                       }) /
                       1000;
    measured.bytes = writtenBytes() - before;
    return measured;
}

void print(const char* what, Measured measured, const std::filesystem::path& support) {
    const auto file = support / "Morvex/notes-from-iphone.json";
    const auto bytes = readWhole(file, PoznamkyStore::File::sizeLimit).value().value();
    const auto once = milliseconds([&] { (void)writeAtomically(support / "once.json", bytes); }) / 1000;
    const auto size = static_cast<double>(bytes.size());
    std::printf("%s: %.2f s until the last of %zu is acknowledged, %.0f MB written; once written and flushed "
                "%.2f s, %.1f MB (%.1f times the bytes)\n",
                what, measured.seconds, noteCount, measured.bytes / million, once, size / million,
                measured.bytes / size);
    std::printf("local calls of mac.status meanwhile: %zu, median %.2f ms, worst %.2f ms\n",
                measured.statuses.size(), median(measured.statuses), std::ranges::max(measured.statuses));
}

/// Both ends and the relay between them.
struct Link {
    Link(const std::filesystem::path& support, Clock& clock, Random& random)
        : pair(pairOf(mac, phone, relay.address(), mac.main, clock)),
          phoneLink(phone.linkTo(mac, pair, relay.address(), DeviceRole::phone, clock, random)),
          computer(mac, support, clock, random),
          macLink(mac.linkTo(phone, pair, relay.address(), DeviceRole::mac, clock, random)) {}

    void end() {
        computer.end();
        await(phone.main, endPhone(phoneLink, &listening));
    }

    Relay relay;
    Device mac;
    Device phone;
    PairID pair;
    std::shared_ptr<SecureLink> phoneLink;
    Computer computer;
    std::shared_ptr<SecureLink> macLink;
    TaskScope listening{phone.main};
};

void benchStream(Clock& clock, Random& random) {
    TemporaryFolder support;
    Link link(support.path(), clock, random);
    SendingPhone sending(link.phoneLink, kilobyteNotes(clock, random), link.listening);
    link.phone.main.post([&] { link.listening.spawn(sending.listen(link.listening.token())); });
    await(link.phone.main, link.phoneLink->spustit());
    link.computer.connect(link.macLink);
    auto measured = measure(
        link.computer, [&] { return sending.hasBegun.load(); },
        [&] { return sending.acknowledged >= noteCount; });
    link.end();
    print("sent one after the other", std::move(measured), support.path());
}

void benchRounds(Clock& clock, Random& random) {
    TemporaryFolder support;
    PhoneArchive archive;
    archive.notes = kilobyteNotes(clock, random);
    for (const auto& note : archive.notes) archive.unconfirmed.push_back(note.id);
    require(writeAtomically(support.path() / "phone/records.json", asBytes(encode(archive))).has_value(),
            "the phone's notes cannot be written");
    Link link(support.path(), clock, random);
    NotesPhone offering(support.path() / "phone", link.phoneLink, clock, random);
    link.phone.main.post([&] { link.listening.spawn(offering.listen(link.listening.token())); });
    await(link.phone.main, link.phoneLink->spustit());
    link.computer.connect(link.macLink);
    auto measured = measure(
        link.computer, [&] { return offering.isReady.load(); }, [&] { return offering.isInStep.load(); });
    link.end();
    print("offered by morvex-phone, whose own file is among the bytes", std::move(measured), support.path());
}

} // namespace
} // namespace morvex

int main() {
    using namespace morvex;
    auto clock = SystemClock::create().value();
    SystemRandom random;
    benchStream(*clock, random);
    benchRounds(*clock, random);
}
