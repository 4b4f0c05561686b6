#include "app/companion/NotesSync.h"
#include "app/companion/StatusReport.h"
#include "app/companion/ToolGate.h"
#include "app/personal/NotesTools.h"
#include "bench/Measure.h"
#include "bench/NotesPhone.h"
#include "foundation/AtomicFile.h"
#include "foundation/ThreadExecutor.h"
#include "platform/linux/BoottimeClock.h"
#include "platform/linux/SystemRandom.h"
#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/FixedFolders.h"
#include "platform/memory/MemoryBookmarks.h"
#include "platform/memory/MemoryDefaults.h"
#include "platform/memory/ScriptedPrograms.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "relay/RelayServer.h"
#include "shared-apple/RelayParovani.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/MacToolName.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <boost/json.hpp>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <thread>
#include <vector>

// What 10,000 notes cost: load, search, merge and save against a plain JSON library on the same file, and a
// catch-up of a phone that keeps them over a real relay against sealing and opening the same messages, with
// local calls meanwhile.

namespace morvex {
namespace {

namespace json = boost::json;

constexpr std::size_t noteCount = 10'000;
constexpr std::size_t fileLimit = 64 * 1024 * 1024;

/// Notes of half a kilobyte, a tenth of them deleted.
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
    vyzaduj(written.has_value(), "the notes cannot be written");
}

void benchStore(const std::filesystem::path& support, Clock& clock, Random& random) {
    const auto file = support / "Morvex/notes-from-iphone.json";
    auto store = PoznamkyStore::load(support, clock, random);
    vyzaduj(store.vsechny().size() == noteCount, "the notes were not read");

    json::value plain;
    auto load = median(9, [&] { (void)PoznamkyStore::load(support, clock, random); });
    auto parse = median(9, [&] {
        auto bytes = readWhole(file, fileLimit).value().value();
        plain = json::parse(asText(bytes));
    });
    std::printf("load: %.1f ms; read and parse alone %.1f ms (%.2f times)\n", load, parse, load / parse);

    auto note = store.vsechny()[noteCount / 2];
    auto merge = median(9, [&] {
        ++note.revision;
        vyzaduj(store.prijmout(note), "a note was refused");
    });
    auto write = median(9, [&] {
        auto written = writeAtomically(support / "plain.json", asBytes(json::serialize(plain)));
        vyzaduj(written.has_value(), "the plain file cannot be written");
    });
    std::printf("merge of one note and save: %.1f ms; serialize and write alone %.1f ms (%.2f times)\n",
                merge, write, merge / write);

    auto search = median(9, [&] { vyzaduj(store.hledat("není tam", 20).empty(), "a ghost was found"); });
    auto find = median(9, [&] {
        std::size_t found = 0;
        for (const auto& one : store.notes())
            found += one.title.contains("není tam") || one.body.contains("není tam") ? 1U : 0U;
        vyzaduj(found == 0, "a ghost was found");
    });
    std::printf("search through all of them: %.1f ms; comparing bytes alone %.1f ms (%.1f times)\n", search,
                find, search / find);
}

/// The relay with its thread.
class Relay {
  public:
    Relay() : server_(make()), thread_([this] { server_->run(); }) {}

    ~Relay() {
        server_->stop();
        thread_.join();
    }

    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    [[nodiscard]] std::string address() const { return server_->address(); }

  private:
    static std::unique_ptr<RelayServer> make() {
        RelayOptions options;
        options.port = "0";
        return RelayServer::create(options, {}, PairStore::open(":memory:").value(), [](std::string_view) {})
            .value();
    }

    std::unique_ptr<RelayServer> server_;
    std::thread thread_;
};

/// One end of the pair, with threads and a socket of its own.
struct Device {
    ThreadExecutor main{"main"};
    ThreadExecutor link{"link"};
    BeastWebSocketClient sockets;
    std::shared_ptr<const DeviceIdentity> identita =
        std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());

    std::shared_ptr<SecureLink> linkTo(const Device& other, PairID pair, const std::string& relay,
                                       DeviceRole role, Clock& clock, Random& random) {
        const auto otherRole = role == DeviceRole::mac ? DeviceRole::phone : DeviceRole::mac;
        PairedPeer peer{std::move(pair),
                        relay,
                        other.identita->deviceID(),
                        other.identita->signingKey(),
                        other.identita->agreementKey(),
                        otherRole,
                        clock.now()};
        return SecureLink::create(identita, std::move(peer), role, {{link, clock, sockets}, random}).value();
    }
};

PairID pairOf(const Device& mac, const Device& phone, const std::string& relay, Executor& executor,
              const Clock& clock) {
    CurlHttpClient http;
    RelayParovani calls(http, clock);
    auto address = RelayAddress::parse(relay).value();
    auto made = await(executor, calls.zalozit(address, mac.identita, DeviceRole::mac)).value();
    return await(executor, calls.pripojit(address, made.pairingToken, phone.identita, DeviceRole::phone))
        .value();
}

/// What `mac.status` tells of, with no outside programs. On the computer's main thread.
class LocalStatus {
  public:
    LocalStatus(const CompanionState& state, Executor& executor, Clock& clock)
        : state_(state),
          discovery_(programs_, clock, executor, {}),
          agents_({programs_, clock, discovery_, executor, executor}, {}) {}

    [[nodiscard]] json::object told(const std::vector<ToolDescriptor>& offer) const {
        return report_.forTool(offer);
    }

  private:
    const CompanionState& state_;
    MemoryDefaults defaults_;
    MemoryBookmarks bookmarks_;
    FakeFolderPicker picker_;
    FixedFolders folders_;
    ScriptedPrograms programs_;
    MacIntegrationSettings integrations_{defaults_};
    std::unique_ptr<Slozky> slozky_ = Slozky::create(defaults_, bookmarks_, picker_, folders_);
    ProgramDiscovery discovery_;
    AgentRunner agents_;
    QProperty<bool> onPower_{true};
    StatusReport report_{state_, integrations_, *slozky_, agents_, onPower_, "1.0", "Mac"};
};

/// The computer's side of a catch-up: its notes, its link, and the gate in front of its tools.
class Computer {
  public:
    Computer(Device& device, const std::filesystem::path& support, Clock& clock, Random& random)
        : device_(device),
          scope_(device.main),
          notes_(PoznamkyStore::load(support, clock, random)),
          summaries_(SouhrnyStore::load(support)),
          tools_(notes_),
          clock_(clock),
          approvals_(clock, random, scope_),
          gate_(table_, state_, approvals_, random),
          link_(device.main, scope_, [this](SecureLink::Udalost event) { return handle(std::move(event)); }),
          sync_(notes_, summaries_, link_, state_, scope_) {
        table_.add(
            MacToolName::status, [] { return true; },
            [this](ToolCall call) { return tellStatus(std::move(call)); });
        tools_.addTo(table_, [] { return true; });
    }

    void connect(const std::shared_ptr<SecureLink>& link) {
        device_.main.post([this, link] { link_.pripojit(link); });
    }

    /// Milliseconds that one local call of a tool takes.
    double callLocally(const std::string& tool, const json::object& arguments, const char* expected) {
        return milliseconds([&] {
            auto answer = await(device_.main, gate_.provestMistne(tool, arguments));
            vyzaduj(answer.contains(expected), "a tool did not answer");
        });
    }

    void end() { await(device_.main, disconnect()); }

  private:
    Task<void> handle(SecureLink::Udalost event) {
        if (std::holds_alternative<SecureLink::Pripraveno>(event)) co_await sync_.doplnit(link_.soucasne());
        const auto* message = std::get_if<SecureLink::Zprava>(&event);
        const auto* call = message ? message->payload.as<MacPayload::ToolCall>() : nullptr;
        if (!call) co_return;
        auto outcome = co_await gate_.provestNastroj({call->name, {}, message->requestID});
        (void)co_await link_.poslat({MacPayload::ToolResult{outcome.ok, encode(outcome.result)}},
                                    message->requestID);
    }

    Task<ToolOutcome> tellStatus(ToolCall) {
        if (!status_) status_.emplace(state_, device_.main, clock_);
        co_return ToolOutcome::done(status_->told(gate_.nabizeneNastroje()));
    }

    Task<void> disconnect() {
        link_.odpojit();
        scope_.stop();
        co_await scope_.join();
        co_await link_.odpojeno();
        status_.reset();
    }

    Device& device_;
    TaskScope scope_;
    PoznamkyStore notes_;
    SouhrnyStore summaries_;
    NotesTools tools_;
    Clock& clock_;
    CompanionState state_;
    std::optional<LocalStatus> status_;
    ToolTable table_;
    Schvalovani approvals_;
    ToolGate gate_;
    PhoneLink link_;
    NotesSync sync_;
};

Task<void> endPhone(std::shared_ptr<SecureLink> link, TaskScope* scope) {
    co_await link->zastavit();
    scope->stop();
    co_await scope->join();
}

/// The same notes encoded, sealed, opened and decoded by one thread, without relay and sockets.
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
            vyzaduj(decode<MacPayload>(opened).has_value(), "a note did not come through");
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

    auto store = PoznamkyStore::load(support, clock, random);
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
    auto clock = BoottimeClock::create().value();
    SystemRandom random;
    fill(support.path(), *clock, random);
    benchStore(support.path(), *clock, random);
    benchCatchUp(support.path(), *clock, random);
}
