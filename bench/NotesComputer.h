#pragma once

#include "app/companion/NotesSync.h"
#include "app/companion/StatusReport.h"
#include "app/companion/ToolGate.h"
#include "app/personal/NotesTools.h"
#include "bench/Measure.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/FixedFolders.h"
#include "platform/memory/MemoryBookmarks.h"
#include "platform/memory/MemoryDefaults.h"
#include "platform/memory/ScriptedPrograms.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "relay/RelayServer.h"
#include "shared-apple/RelayParovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/MacToolName.h"
#include "tests/support/Await.h"

#include <boost/json.hpp>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

// A relay, a computer that keeps notes and whatever it needs for that, each with threads and sockets of its
// own.

namespace morvex {

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
    ThreadExecutor records{"records"};
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

inline PairID pairOf(const Device& mac, const Device& phone, const std::string& relay, Executor& executor,
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

    [[nodiscard]] boost::json::object told(const std::vector<ToolDescriptor>& offer) const {
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

/// The computer's side: its notes, its link, and the gate in front of its tools.
class Computer {
  public:
    Computer(Device& device, const std::filesystem::path& support, Clock& clock, Random& random)
        : device_(device),
          scope_(device.main),
          notes_(support, {device.main, device.records, clock}, random),
          summaries_(support, {device.main, device.records, clock}),
          tools_(notes_),
          clock_(clock),
          approvals_(clock, random, scope_),
          gate_(table_, state_, approvals_, random),
          link_(device.main, scope_, [this](SecureLink::Udalost event) { return handle(std::move(event)); }),
          sync_(notes_, summaries_, link_, state_, device.main, scope_) {
        table_.add(
            MacToolName::status, [] { return true; },
            [this](ToolCall call) { return tellStatus(std::move(call)); });
        tools_.addTo(table_, [] { return true; });
    }

    void connect(const std::shared_ptr<SecureLink>& link) {
        device_.main.post([this, link] { link_.pripojit(link); });
    }

    /// Milliseconds that one local call of a tool takes.
    double callLocally(const std::string& tool, const boost::json::object& arguments, const char* expected) {
        return milliseconds([&] {
            auto answer = await(device_.main, gate_.provestMistne(tool, arguments));
            vyzaduj(answer.contains(expected), "a tool did not answer");
        });
    }

    void end() { await(device_.main, disconnect()); }

  private:
    Task<void> handle(SecureLink::Udalost event) {
        if (std::holds_alternative<SecureLink::Pripraveno>(event)) co_await sync_.doplnit(link_.soucasne());
        auto* message = std::get_if<SecureLink::Zprava>(&event);
        if (const auto* told = message ? message->payload.as<MacPayload::NoteUpdate>() : nullptr)
            co_await sync_.prijmout(*told);
        const auto* call = message ? message->payload.as<MacPayload::ToolCall>() : nullptr;
        if (!call) co_return;
        co_await sync_.vyrizeno();
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
        co_await sync_.vyrizeno();
        co_await notes_.ulozeno();
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

} // namespace morvex
