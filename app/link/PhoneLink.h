#pragma once

#include "app/link/PhoneInbox.h"
#include "foundation/TaskScope.h"
#include "foundation/Turns.h"
#include "shared-apple/SecureLink.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace morvex {

/// Holds the live link to the phone, if there is one, and reads its events. Events of the link itself are
/// handled at once, one after the other. Messages of a session are handled strictly in order, each to its
/// end; calls also wait for the messages of earlier sessions, over this link or another. A new session can
/// therefore start while a call of the previous one still runs. Main thread.
class PhoneLink {
  public:
    /// What becomes of what a link tells of itself.
    using Handler = std::function<Task<void>(std::shared_ptr<SecureLink> link, SecureLink::Udalost event)>;

    /// `scope` runs the links and what their listeners still handle; it belongs to the owner and to the main
    /// executor. `inbox` handles the messages.
    PhoneLink(Executor& main, TaskScope& scope, PhoneInbox& inbox, Handler handler);

    /// Replaces the link. The old one goes down in the background; its events are no longer read.
    void pripojit(std::shared_ptr<SecureLink> link);

    void odpojit();

    /// If the link waits for its next attempt, the attempt begins now.
    void connectNow();

    /// Resumes when no link is going down any more. Must be awaited before this object is destroyed.
    Task<void> odpojeno() { return leaving_.join(); }

    [[nodiscard]] bool isPresent() const { return link_ != nullptr; }

    /// The link of this moment, or null. A reply goes over the link by which its call came, and is lost with
    /// it.
    [[nodiscard]] std::shared_ptr<SecureLink> current() const { return link_; }

    /// Sends over the current link. Without a link it fails with `TalkSpanError::MacOffline`, otherwise as
    /// `SecureLink::poslat` does.
    Task<Result<void>> poslat(MacPayload payload, std::string requestID);

  private:
    using Event = EventStream<SecureLink::Udalost>::Held;

    struct Session {
        std::shared_ptr<Session> before; ///< until a call has waited for it
        std::deque<Event> waiting;
        Turns handling; ///< held from the first waiting message to the last one
    };

    Task<void> listen(std::shared_ptr<SecureLink> link, std::stop_token stop);
    void beginSession();
    void putAside(const std::shared_ptr<SecureLink>& link, Event message);
    /// Resumes when the earlier sessions have nothing under way. The caller keeps the session alive.
    static Task<void> waitForThoseBefore(Session& session);
    /// Keeps the link alive, because the link counts the waiting messages.
    Task<void> handleMessages(std::shared_ptr<SecureLink> link, std::shared_ptr<Session> session,
                              std::stop_token stop);

    Executor& main_;
    TaskScope& scope_;
    PhoneInbox& inbox_;
    Handler handler_;
    std::shared_ptr<SecureLink> link_;
    std::shared_ptr<TaskScope> posluchac_;
    std::shared_ptr<Session> relace_ = std::make_shared<Session>(); ///< the latest one
    TaskScope leaving_;                                             ///< links that go down
};

} // namespace morvex
