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

/// A phone that stores and acknowledges the notes of its computer, as `morvex-phone` does, and records the
/// times.
class NotesPhone final : public Outbox {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// Stores its records in `folder`. Use on the link's executor, except the atomic members.
    NotesPhone(const std::filesystem::path& folder, std::shared_ptr<SecureLink> link, Clock& clock,
               Random& random);

    Task<void> listen(std::stop_token stop);

    Task<Result<void>> trySend(MacPayload payload, std::string requestID) override;
    Task<std::string> sendMilestone() override;

    std::atomic<std::size_t> notes = 0; ///< notes received
    std::atomic<bool> isReady = false;  ///< a session exists
    std::atomic<bool> isInStep = false; ///< everything is saved and acknowledged; the times below are valid
    Time ready;                         ///< when the session was ready
    Time last;                          ///< when the last note arrived
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
