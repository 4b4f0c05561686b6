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

/// What a typed line says to a question, "a" or "n", in Czech or English, short or long; nothing for other
/// words.
std::optional<bool> yesOrNo(const std::string& line);

/// Looks after what comes while a command waits for something else: shows progress and tasks of the Mac,
/// acknowledges these, keeps notes, summaries and settings in step, and shows requests for approval and
/// answers them as the options say.
class Attendant final : public EventListener {
  public:
    enum class Shows { whatMatters, everything };

    Attendant(Phone& phone, PhoneSession& session, Shows shows);

    Task<void> heard(Inbox::Event event) override;

    [[nodiscard]] RecordSync& records() { return records_; }

    [[nodiscard]] SettingsSync& settings() { return settings_; }

    /// True when the line answered the open request for approval.
    Task<bool> isAnswer(std::string line);

    /// Decides a request, or the open one without an id.
    Task<Result<void>> decide(std::optional<std::string> approvalID, bool isApproved);

    /// A call of this tool runs, until `settled`. The Mac reads nothing of this phone before it has answered
    /// that call, so what the call asks is decided there.
    void calling(std::string tool) { called_ = std::move(tool); }

    void settled() { called_.reset(); }

    /// Whether requests are answered here at all.
    [[nodiscard]] bool decides() const { return policy_ != ApprovalPolicy::leave; }

    [[nodiscard]] bool hasDecided() const { return hasDecided_; }

  private:
    [[nodiscard]] bool isMilestone(const Inbox::Event& event) const;
    void show(const Inbox::Event& event);
    /// Only what is kept is acknowledged.
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
