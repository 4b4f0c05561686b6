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

/// Receives the events that arrive while a command waits for another one.
class EventListener {
  public:
    virtual ~EventListener() = default;
    virtual Task<void> heard(Inbox::Event event) = 0;
};

/// A running link to the paired Mac, and the waits on it: for the session, for the status, for a result by
/// its request id. Owned by a command; use on the phone's executor. Call `start()` first and await `stop()`
/// before destroying it; one wait at a time. Failures of waits are `PhoneError`.
class PhoneSession final : public Outbox {
  public:
    /// Fails with `TalkSpanError::NotPaired` when the stored relay address is unusable.
    static Result<std::unique_ptr<PhoneSession>> create(std::shared_ptr<const DeviceIdentity> identita,
                                                        PairedPeer mac, SecureLink::Services services,
                                                        Inbox& inbox);

    Task<void> start();
    Task<void> stop();

    /// The next event, after this object has processed it. Nothing at `until` (time since boot) or when the
    /// user interrupts.
    Task<std::optional<Inbox::Event>> next(std::optional<Clock::Duration> until);

    Task<Result<void>> untilReady(Clock::Duration limit, EventListener& listener);

    // The limits below say how long the Mac may be silent: messages that make up for earlier sessions,
    // acknowledgements and results restart them.

    /// The Mac's latest status in this session; waits for the first one.
    Task<Result<MacStatus>> status(Clock::Duration limit, EventListener& listener);

    /// Waits, also across new sessions, until `isSo` returns true. It is called after every event.
    Task<Result<void>> until(std::function<bool()> isSo, Clock::Duration limit, EventListener& listener);

    /// Calls a tool and waits for its result, which the listener gets, too. Progress also restarts the limit,
    /// and an open approval extends it until the approval expires.
    Task<Result<MacPayload::ToolResult>> call(std::string name, std::string argumentsJSON,
                                              Clock::Duration limit, EventListener& listener);

    /// Waits for a session, sends a message that has no answer, and waits until the Mac has handled it. Fails
    /// when the session ends before.
    Task<Result<void>> handOver(MacPayload payload, std::string requestID, Clock::Duration limit,
                                EventListener& listener);

    Task<Result<void>> trySend(MacPayload payload, std::string requestID) override;
    Task<std::string> sendMilestone() override;

    Task<Result<void>> decide(std::string approvalID, bool isApproved);
    /// Tells the Mac that this revision of a task has arrived. If the acknowledgement gets lost, it is sent
    /// again after the Mac's next report of the task.
    Task<void> acknowledge(WorkItem item);

    /// Set while the relay refuses this phone.
    [[nodiscard]] std::optional<Error> refusal() const;

  private:
    PhoneSession(std::shared_ptr<SecureLink> link, SecureLink::Services services, Inbox& inbox);

    void takeNote(const Inbox::Event& event);
    void takeNote(const MacAvailability& stav);
    Task<Result<void>> untilReadyBy(Clock::Duration deadline, EventListener& listener);
    Task<Result<MacPayload::ToolResult>> result(std::string id, Clock::Duration deadline,
                                                Clock::Duration limit, EventListener& listener);
    /// The deadline after this message: prolonged if the Mac shows signs of life, else unchanged.
    [[nodiscard]] Clock::Duration prolonged(Clock::Duration deadline, Clock::Duration limit,
                                            const SecureLink::Zprava& message, const std::string& id) const;
    [[nodiscard]] std::unexpected<Error> unreachable() const;
    /// The failure of a wait for an answer.
    [[nodiscard]] std::unexpected<Error> unanswered() const;

    [[nodiscard]] Clock& clock() const { return services_.relay.clock; }

    std::shared_ptr<SecureLink> link_;
    SecureLink::Services services_;
    Inbox& inbox_;
    TaskScope forwarding_;
    std::optional<MacStatus> status_; ///< of the current session
    std::string trouble_;             ///< failure of the last connection
    std::optional<std::string> refusal_;
    int sessions_ = 0; ///< number of sessions so far
    bool isAtRelay_ = false;
    bool isReady_ = false;
};

} // namespace morvex
