#pragma once

#include "phone/Phone.h"
#include "phone/PhoneSession.h"
#include "phone/RecordSync.h"
#include "phone/SettingsSync.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>
#include <utility>

namespace morvex {

/// Interprets a typed line as the answer to a question: "a" or "n", in Czech or English, short or long;
/// nothing for other words.
std::optional<bool> yesOrNo(const std::string& line);

/// Handles events while a command waits for something else: shows progress and tasks of the Mac, acknowledges
/// tasks, keeps notes, summaries and settings in sync, and shows approval requests and answers them according
/// to the options.
class Attendant final : public EventListener {
  public:
    enum class Shows { whatMatters, everything };

    Attendant(Phone& phone, PhoneSession& session, Shows shows);

    Task<void> heard(Inbox::Event event) override;

    [[nodiscard]] RecordSync& records() { return records_; }

    [[nodiscard]] SettingsSync& settings() { return settings_; }

    /// Returns true when the line answered the open approval request.
    Task<bool> isAnswer(std::string line);

    /// Decides the request with this id; without an id, the open request.
    Task<Result<void>> decide(std::optional<std::string> approvalID, bool isApproved);

    /// A call of this tool is running, until `settled`. The Mac reads no other message of this phone before
    /// it has answered the call, so an approval for the call must be decided on the Mac.
    void calling(std::string tool) { called_ = std::move(tool); }

    void settled() { called_.reset(); }

    /// Whether requests are answered here at all.
    [[nodiscard]] bool decides() const { return policy_ != ApprovalPolicy::leave; }

    [[nodiscard]] bool hasDecided() const { return hasDecided_; }

  private:
    [[nodiscard]] bool isMilestone(const Inbox::Event& event) const;
    void show(const Inbox::Event& event);
    /// Stores the task and acknowledges it only if it was stored.
    Task<void> take(WorkItem item);
    Task<void> consider(ApprovalRequest request);
    Task<void> answer(bool isApproved);
    void ask();
    void dropExpired();

    Phone& phone_;
    PhoneSession& session_;
    RecordSync records_;
    SettingsSync settings_;
    Shows shows_;
    ApprovalPolicy policy_;
    std::optional<std::string> called_;
    std::optional<ApprovalRequest> open_;
    Sentence lastTrouble_;
    bool hasDecided_ = false;
};

} // namespace morvex
