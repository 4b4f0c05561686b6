#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/companion/NotesSync.h"
#include "app/companion/PhoneLink.h"
#include "app/companion/TaskSync.h"
#include "app/companion/ToolGate.h"
#include "app/customapps/MacCustomAppsService.h"
#include "app/voice/MacVoiceController.h"
#include "foundation/Turns.h"
#include "shared/wire/MacPayload.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>

namespace morvex {

/// What becomes of each message of the phone. Main thread; `PhoneLink` awaits each message of a session to
/// its end, so that calls of the phone run one at a time and a decision that arrives meanwhile stays unread.
class PhoneInbox {
  public:
    /// All of it outlives the inbox.
    struct Services {
        ToolGate& nastroje;
        Schvalovani& schvalovani;
        TaskSync& ukoly;
        NotesSync& poznamky;
        PhoneLink& spojeni;
        MacVoiceController& hlas;
        MacCustomAppsService& customApps;
        std::function<Task<void>()> poslatStav;
    };

    explicit PhoneInbox(Services services) : services_(std::move(services)) {}

    Task<void> zpracovatZpravu(MacPayload payload, std::string requestID);

    /// The phone is not paired any more: programs that its calls have started end, and settings of it that
    /// wait for their turn are not taken. What comes afterwards is of a phone that was paired anew.
    void opustit() { std::exchange(prace_, {}).request_stop(); }

  private:
    using SettingsTurn = std::optional<Turns::Turn>;

    Task<void> handle(MacPayload::ToolCall call, std::string requestID);
    Task<void> handle(MacPayload::ApprovalDecision decision, std::string requestID);
    Task<void> handle(MacPayload::WorkItemAck potvrzeni, std::string requestID);
    /// The offer depends on the key and on the apps, so a status follows these two.
    Task<void> handle(MacPayload::OpenAICredential credential, std::string requestID);
    Task<void> handle(MacPayload::CustomApps list, std::string requestID);
    Task<void> handle(MacPayload::Preferences sent, std::string requestID);
    Task<void> handle(MacPayload::NoteUpdate update, std::string requestID);
    Task<void> handle(MacPayload::SummaryUpdate update, std::string requestID);
    Task<void> ignore();
    /// Nothing when the phone has been abandoned meanwhile.
    Task<SettingsTurn> naRade();
    /// A lost reply stays lost: the work is done and stands.
    Task<void> poslatVysledek(std::shared_ptr<SecureLink> link, ToolOutcome outcome, std::string requestID);

    Services services_;
    std::stop_source prace_; ///< of the phone that is paired
    Turns settings_;         ///< the vault is slow, and what was sent later is to count
};

} // namespace morvex
