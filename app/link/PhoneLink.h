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

/// Holds the live link to the phone, if there is one, and reads its events. What the link tells of itself is
/// handled at once, one event after the other. The messages of a session are handled strictly in order, each
/// to its end; calls wait also for the messages of the sessions before, over this link or another. A new
/// session is thus looked at while a call of the last one still runs. Main thread.
class PhoneLink {
  public:
    /// What becomes of what a link tells of itself.
    using Handler = std::function<Task<void>(std::shared_ptr<SecureLink> link, SecureLink::Udalost event)>;

    /// `scope` runs the links and what their listeners still handle; it belongs to the owner and to the main
    /// executor. `inbox` handles the messages.
    PhoneLink(Executor& main, TaskScope& scope, PhoneInbox& inbox, Handler handler);

    /// Replaces the link. The old one goes down in the background; its events are read no more.
    void pripojit(std::shared_ptr<SecureLink> link);

    void odpojit();

    /// The attempt that the link waits for begins now.
    void zkusitHned();

    /// Resumes when no link is still going down. Awaited before this object goes.
    Task<void> odpojeno() { return odchazejici_.join(); }

    [[nodiscard]] bool jePritomne() const { return link_ != nullptr; }

    /// The link of this moment, or null. A reply goes over the link by which its call came, and is lost with
    /// it.
    [[nodiscard]] std::shared_ptr<SecureLink> soucasne() const { return link_; }

    /// Sends over the link of this moment. Without one it fails with `TalkSpanError::MacOffline`, else as
    /// `SecureLink::poslat` does.
    Task<Result<void>> poslat(MacPayload payload, std::string requestID);

  private:
    using Event = EventStream<SecureLink::Udalost>::Held;

    struct Session {
        std::shared_ptr<Session> before; ///< until a call has waited for it
        std::deque<Event> waiting;
        Turns handling; ///< taken from the first message to the last one that waits
    };

    Task<void> listen(std::shared_ptr<SecureLink> link, std::stop_token stop);
    void beginSession();
    void putAside(const std::shared_ptr<SecureLink>& link, Event message);
    /// Until nothing of the sessions before is under way. The caller keeps the session.
    static Task<void> waitForThoseBefore(Session& session);
    /// Holds the link, in which what waits is counted.
    Task<void> handleMessages(std::shared_ptr<SecureLink> link, std::shared_ptr<Session> session,
                              std::stop_token stop);

    Executor& main_;
    TaskScope& scope_;
    PhoneInbox& inbox_;
    Handler handler_;
    std::shared_ptr<SecureLink> link_;
    std::shared_ptr<TaskScope> posluchac_;
    std::shared_ptr<Session> relace_ = std::make_shared<Session>(); ///< the last one
    TaskScope odchazejici_;                                         ///< links that go down
};

} // namespace morvex
