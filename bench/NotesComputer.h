#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/companion/StatusReport.h"
#include "app/companion/ToolGate.h"
#include "app/link/PhoneLink.h"
#include "app/personal/NotesSync.h"
#include "app/personal/NotesTools.h"
#include "bench/Measure.h"
#include "bench/PairedDevices.h"
#include "foundation/TaskScope.h"
#include "platform/memory/MemoryDefaults.h"
#include "shared/wire/Json.h"
#include "shared/wire/MacToolName.h"
#include "tests/support/Await.h"

#include <boost/json.hpp>

#include <memory>
#include <optional>
#include <string>
#include <utility>

// A computer with a notes store, and what it needs for that.

namespace morvex {

/// The data for `mac.status`, with no features. On the computer's main thread.
class LocalStatus {
  public:
    [[nodiscard]] boost::json::object told(const std::vector<ToolDescriptor>& offer) const {
        return report_.forTool(offer);
    }

  private:
    std::vector<Feature*> features_;
    QProperty<bool> onPower_{true};
    StatusReport report_{features_, onPower_, "1.0", "Mac"};
};

/// The computer's side: its notes, its link, and the gate before its tools.
class Computer {
  public:
    Computer(Device& device, const std::filesystem::path& support, Clock& clock, Random& random)
        : device_(device),
          scope_(device.main),
          notes_(support, {device.main, device.records, clock}, random),
          summaries_(support, {device.main, device.records, clock}),
          tools_(notes_),
          approvals_(clock, random, scope_),
          gate_(table_, state_, approvals_, random),
          link_(device.main, scope_, inbox_,
                [this](std::shared_ptr<SecureLink> from, SecureLink::Udalost event) {
                    return catchUp(std::move(from), std::move(event));
                }),
          sync_(notes_, summaries_, {link_, device.main, scope_, [](const Sentence&) {}}) {
        table_.add(MacToolName::status, [] { return true; }, this, &Computer::tellStatus);
        tools_.addTo(table_, [] { return true; });
        inbox_.take<MacPayload::NoteUpdate>([this](MacPayload::NoteUpdate told, Delivery delivery) {
            return sync_.prijmout(std::move(told), std::move(delivery.link));
        });
        inbox_.take<MacPayload::ToolCall>([this](MacPayload::ToolCall call, Delivery delivery) {
            return answer(std::move(call), std::move(delivery));
        });
    }

    void connect(const std::shared_ptr<SecureLink>& link) {
        device_.main.post([this, link] { link_.pripojit(link); });
    }

    /// The duration of one local tool call in milliseconds.
    double callLocally(const std::string& tool, const boost::json::object& arguments, const char* expected) {
        return milliseconds([&] {
            auto answer = await(device_.main, gate_.provestMistne(tool, arguments));
            require(answer.contains(expected), "a tool did not answer");
        });
    }

    void end() { await(device_.main, disconnect()); }

  private:
    Task<void> catchUp(std::shared_ptr<SecureLink> from, SecureLink::Udalost event) {
        if (std::holds_alternative<SecureLink::Pripraveno>(event)) co_await sync_.catchUp(from);
    }

    Task<void> answer(MacPayload::ToolCall call, Delivery delivery) {
        co_await sync_.allSettled();
        auto outcome = co_await gate_.provestNastroj({call.name, {}, delivery.requestID});
        (void)co_await delivery.link->poslat({MacPayload::ToolResult{outcome.ok, encode(outcome.result)}},
                                             delivery.requestID);
    }

    Task<ToolOutcome> tellStatus(NoArguments, ToolCall) {
        if (!status_) status_.emplace();
        co_return ToolOutcome::done(status_->told(gate_.nabizeneNastroje()));
    }

    Task<void> disconnect() {
        link_.odpojit();
        scope_.stop();
        co_await scope_.join();
        co_await link_.odpojeno();
        co_await sync_.allSettled();
        co_await notes_.saved();
        status_.reset();
    }

    Device& device_;
    TaskScope scope_;
    PoznamkyStore notes_;
    SouhrnyStore summaries_;
    NotesTools tools_;
    CompanionState state_;
    std::optional<LocalStatus> status_;
    ToolTable table_;
    Schvalovani approvals_;
    ToolGate gate_;
    PhoneInbox inbox_;
    PhoneLink link_;
    NotesSync sync_;
};

} // namespace morvex
