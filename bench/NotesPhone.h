#pragma once

#include "phone/RecordSync.h"
#include "shared-apple/SecureLink.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

namespace morvex {

/// A phone that keeps and acknowledges the notes of its computer, as `morvex-phone` does, and notes the
/// times.
class NotesPhone final : public Outbox {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// Keeps its records in `folder`. Lives on the link's executor but for what is atomic.
    NotesPhone(const std::filesystem::path& folder, std::shared_ptr<SecureLink> link, Clock& clock,
               Random& random);

    Task<void> listen(std::stop_token stop);

    Task<Result<void>> trySend(MacPayload payload, std::string requestID) override;
    Task<std::string> sendMilestone() override;

    std::atomic<std::size_t> notes = 0; ///< heard
    std::atomic<bool> isReady = false;  ///< a session stands
    std::atomic<bool> isInStep = false; ///< everything is saved and acknowledged; what stands below is valid
    Time ready;                         ///< of the session
    Time last;                          ///< note
    Time inStep;

  private:
    void noteTime(const SecureLink::Udalost& event);

    std::shared_ptr<SecureLink> link_;
    PhoneRecords records_;
    std::ostringstream told_;
    Terminal terminal_{{told_}, {told_}};
    RecordSync sync_{records_, *this, terminal_};
    int milestones_ = 0;
};

} // namespace morvex
