#include "bench/Measure.h"
#include "bench/NotesComputer.h"
#include "bench/NotesPhone.h"
#include "platform/posix/base/AtomicFile.h"
#include "shared/trust/SessionHandshake.h"
#include "tests/support/AwaitedStores.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <algorithm>
#include <cstdio>
#include <vector>

// Measures 10,000 notes: loading, searching, merging and saving, compared with a plain JSON library on the
// same file; and a catch-up of a phone over a real relay, compared with sealing and opening the same
// messages, with local calls meanwhile.

namespace morvex {
namespace {

namespace json = boost::json;

constexpr std::size_t noteCount = 10'000;
constexpr std::size_t fileLimit = 64 * 1024 * 1024;

/// Creates notes of half a kilobyte, a tenth of them deleted.
void fill(const std::filesystem::path& support, Clock& clock, Random& random) {
    NotesArchive archive;
    for (std::size_t i = 0; i < noteCount; ++i) {
        std::string body;
        while (body.size() < 500)
            body += "Žluťoučký kůň, který pěl, [ďábelské] ódy, " + std::to_string(i) + ". ";
        auto changed = clock.now() - std::chrono::seconds(i);
        archive.notes.records.push_back(
            {random.uuid(), "Poznámka " + std::to_string(i), body, changed, changed, 1, std::nullopt});
        if (i % 10 == 9) archive.notes.records.back().deletedAt = changed;
    }
    auto written = writeAtomically(support / "Morvex/notes-from-iphone.json", asBytes(encode(archive)));
    require(written.has_value(), "the notes cannot be written");
}

void benchStore(const std::filesystem::path& support, Clock& clock, Random& random) {
    const auto file = support / "Morvex/notes-from-iphone.json";
    AwaitedNotes store(support, clock, random);
    require(store.vsechny().size() == noteCount, "the notes were not read");

    json::value plain;
    auto load = median(9, [&] { (void)AwaitedNotes(support, clock, random); });
    auto parse = median(9, [&] {
        auto bytes = readWhole(file, fileLimit).value().value();
        plain = json::parse(asText(bytes));
    });
    std::printf("load: %.1f ms; read and parse alone %.1f ms (%.2f times)\n", load, parse, load / parse);

    auto note = store.vsechny()[noteCount / 2];
    auto merge = median(9, [&] {
        ++note.revision;
        require(store.prijmout(note), "a note was refused");
    });
    auto write = median(9, [&] {
        auto written = writeAtomically(support / "plain.json", asBytes(json::serialize(plain)));
        require(written.has_value(), "the plain file cannot be written");
    });
    std::printf("merge of one note and save: %.1f ms; serialize and write alone %.1f ms (%.2f times)\n",
                merge, write, merge / write);

    auto search = median(9, [&] { require(store.hledat("není tam", 20).empty(), "a ghost was found"); });
    auto find = median(9, [&] {
        std::size_t found = 0;
        for (const auto& one : store.notes())
            found += one.title.contains("není tam") || one.body.contains("není tam") ? 1U : 0U;
        require(found == 0, "a ghost was found");
    });
    std::printf("search through all of them: %.1f ms; comparing bytes alone %.1f ms (%.1f times)\n", search,
                find, search / find);
}

Task<void> endPhone(std::shared_ptr<SecureLink> link, TaskScope* scope) {
    co_await link->zastavit();
    scope->stop();
    co_await scope->join();
}

/// Encodes, seals, opens and decodes the same notes on one thread, without relay and sockets.
double sealAndOpenAll(const Device& mac, const Device& phone, const std::vector<MorvexNote>& notes,
                      Clock& clock, Random& random) {
    const PairID pair{"PAIR"};
    auto macKey = EphemeralPrivateKey::generate();
    auto phoneKey = EphemeralPrivateKey::generate();
    auto peerOf = [&](const Device& device, DeviceRole role) {
        return PairedPeer{pair,
                          "",
                          device.identita->deviceID(),
                          device.identita->signingKey(),
                          device.identita->agreementKey(),
                          role,
                          clock.now()};
    };
    auto here =
        SecureChannel::create(mac.identita->pairKey(peerOf(phone, DeviceRole::phone)).value(), macKey,
                              phoneKey.publicKey(),
                              {pair, mac.identita->deviceID(), phone.identita->deviceID(), DeviceRole::mac})
            .value();
    auto there =
        SecureChannel::create(phone.identita->pairKey(peerOf(mac, DeviceRole::mac)).value(), phoneKey,
                              macKey.publicKey(),
                              {pair, phone.identita->deviceID(), mac.identita->deviceID(), DeviceRole::phone})
            .value();
    return milliseconds([&] {
        for (const auto& note : notes) {
            auto envelope =
                here.seal(asBytes(encode(MacPayload{MacPayload::NoteUpdate{note}})), "note",
                          EnvelopeKind::data, std::chrono::seconds(60), {clock.now(), random.uuid()});
            auto frame = encode(RelayMessage{RelayMessage::Forward{*std::move(envelope)}});
            auto arrived = decode<RelayMessage>(frame).value();
            auto opened = there.open(arrived.as<RelayMessage::Forward>()->envelope, clock.now()).value();
            require(decode<MacPayload>(opened).has_value(), "a note did not come through");
        }
    });
}

void benchCatchUp(const std::filesystem::path& support, Clock& clock, Random& random) {
    Relay relay;
    Device mac;
    Device phone;
    auto pair = pairOf(mac, phone, relay.address(), mac.main, clock);
    auto phoneLink = phone.linkTo(mac, pair, relay.address(), DeviceRole::phone, clock, random);
    NotesPhone keeping(support / "phone", phoneLink, clock, random);
    TaskScope listening(phone.main);
    phone.main.post([&] { listening.spawn(keeping.listen(listening.token())); });
    await(phone.main, phoneLink->spustit());

    Computer computer(mac, support, clock, random);
    computer.connect(mac.linkTo(phone, pair, relay.address(), DeviceRole::mac, clock, random));
    std::vector<double> statuses;
    std::vector<double> searches;
    while (keeping.notes == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    while (keeping.notes < noteCount) {
        statuses.push_back(computer.callLocally("mac.status", {}, "tools"));
        searches.push_back(computer.callLocally("mac.notes.search", {{"limit", 1}}, "notes"));
    }
    while (!keeping.isInStep) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const double seconds = std::chrono::duration<double>(keeping.last - keeping.ready).count();
    const double kept = std::chrono::duration<double>(keeping.inStep - keeping.ready).count();
    computer.end();
    await(phone.main, endPhone(phoneLink, &listening));

    AwaitedNotes store(support, clock, random);
    const double alone = sealAndOpenAll(mac, phone, store.vsechny(), clock, random) / 1000;
    std::printf("catch-up of %zu notes over a relay: %.2f s, saved and acknowledged after %.2f s; sealing "
                "and opening "
                "alone %.2f s (%.1f times)\n",
                noteCount, seconds, kept, alone, seconds / alone);
    for (const auto& [tool, calls] : {std::pair{"mac.status", &statuses}, {"mac.notes.search", &searches}})
        std::printf("local calls of %s meanwhile: %zu, median %.2f ms, worst %.2f ms\n", tool, calls->size(),
                    median(*calls), std::ranges::max(*calls));
}

} // namespace
} // namespace morvex

int main() {
    using namespace morvex;
    TemporaryFolder support;
    auto clock = SystemClock::create().value();
    SystemRandom random;
    fill(support.path(), *clock, random);
    benchStore(support.path(), *clock, random);
    benchCatchUp(support.path(), *clock, random);
}
