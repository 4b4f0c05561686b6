#pragma once

#include "foundation/TaskScope.h"
#include "phone/Inbox.h"
#include "phone/Outbox.h"
#include "shared-apple/SecureLink.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace morvex {

/// Gets every event that passes while a command waits for another one.
class EventListener {
  public:
    virtual ~EventListener() = default;
    virtual Task<void> heard(Inbox::Event event) = 0;
};

/// A running link to the paired Mac, and the waiting on it: for the session, for the status, for a result by
/// its request id. Owned by a command; lives on the phone's executor. `start()` first, `stop()` awaited
/// before it goes; one wait at a time. Failures of waits are `PhoneError`.
class PhoneSession final : public Outbox {
  public:
    /// Fails with `TalkSpanError::NotPaired` when the stored relay address is unusable.
    static Result<std::unique_ptr<PhoneSession>> create(std::shared_ptr<const DeviceIdentity> identita,
                                                        PairedPeer mac, SecureLink::Services services,
                                                        Inbox& inbox);

    Task<void> start();
    Task<void> stop();

    /// The next event, after this object took note of it. Nothing at `until` (time since boot) or when the
    /// user interrupts.
    Task<std::optional<Inbox::Event>> next(std::optional<Clock::Duration> until);

    Task<Result<void>> untilReady(Clock::Duration limit, EventListener& listener);

    // The limits are how long the Mac may be silent: what it makes good of earlier sessions, what it
    // acknowledges and what it answers start them anew.

    /// What the Mac reported last in this session; waits for the first report.
    Task<Result<MacStatus>> status(Clock::Duration limit, EventListener& listener);

    /// Waits, over new sessions too, until it is so. It is asked after every event.
    Task<Result<void>> until(std::function<bool()> isSo, Clock::Duration limit, EventListener& listener);

    /// Calls a tool and waits for its result, which the listener gets too. Progress starts the limit anew as
    /// well, and an open approval holds it until the approval lapses.
    Task<Result<MacPayload::ToolResult>> call(std::string name, std::string argumentsJSON,
                                              Clock::Duration limit, EventListener& listener);

    /// Sends a message that has no answer, once there is a session, and waits until the Mac has handled it.
    /// Fails when the session did not last so long.
    Task<Result<void>> handOver(MacPayload payload, std::string requestID, Clock::Duration limit,
                                EventListener& listener);

    Task<Result<void>> trySend(MacPayload payload, std::string requestID) override;
    Task<std::string> sendMilestone() override;

    Task<Result<void>> decide(std::string approvalID, bool isApproved);
    /// Tells the Mac that this revision of a task has arrived. One that gets lost is told again after the
    /// Mac's next report of the task.
    Task<void> acknowledge(WorkItem item);

    /// Set while the relay does not let this phone in.
    [[nodiscard]] std::optional<Error> refusal() const;

  private:
    PhoneSession(std::shared_ptr<SecureLink> link, SecureLink::Services services, Inbox& inbox);

    void takeNote(const Inbox::Event& event);
    void takeNote(const MacAvailability& stav);
    Task<Result<void>> untilReadyBy(Clock::Duration deadline, EventListener& listener);
    Task<Result<MacPayload::ToolResult>> result(std::string id, Clock::Duration deadline,
                                                Clock::Duration limit, EventListener& listener);
    /// A later end of the silence after this event, or the same.
    [[nodiscard]] Clock::Duration prolonged(Clock::Duration deadline, Clock::Duration limit,
                                            const SecureLink::Zprava& message, const std::string& id) const;
    [[nodiscard]] std::unexpected<Error> unreachable() const;
    /// What a wait for an answer ended in.
    [[nodiscard]] std::unexpected<Error> unanswered() const;

    [[nodiscard]] Clock& clock() const { return services_.relay.clock; }

    std::shared_ptr<SecureLink> link_;
    SecureLink::Services services_;
    Inbox& inbox_;
    TaskScope forwarding_;
    std::optional<MacStatus> status_; ///< of the present session
    std::string trouble_;             ///< of the last connection
    std::optional<std::string> refusal_;
    int sessions_ = 0; ///< so far
    bool isAtRelay_ = false;
    bool isReady_ = false;
};

} // namespace morvex
