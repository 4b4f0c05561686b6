#pragma once

#include "foundation/TaskScope.h"
#include "shared-apple/SecureLink.h"

#include <functional>
#include <memory>
#include <string>

namespace morvex {

/// Holds the live link to the phone, if there is one, and the one listener that reads its events: it handles
/// an event to its end before it takes the next one, so that what the phone sends over a link is handled
/// strictly in order. The events of a new link do not wait for what the one before still handles. Main
/// thread.
class PhoneLink {
  public:
    using Handler = std::function<Task<void>(SecureLink::Udalost)>;

    /// `scope` runs the links and what their listeners still handle; it belongs to the owner and to the main
    /// executor.
    PhoneLink(Executor& main, TaskScope& scope, Handler handler);

    /// Replaces the link. The old one goes down in the background; its events are read no more.
    void pripojit(std::shared_ptr<SecureLink> link);

    void odpojit();

    /// Resumes when no link is still going down. Awaited before this object goes.
    Task<void> odpojeno() { return odchazejici_.join(); }

    [[nodiscard]] bool jePritomne() const { return spojeni_ != nullptr; }

    /// The link of this moment, or null. A reply goes over the link by which its call came, and is lost with
    /// it.
    [[nodiscard]] std::shared_ptr<SecureLink> soucasne() const { return spojeni_; }

    /// Sends over the link of this moment. Without one it fails with `TalkSpanError::MacOffline`, else as
    /// `SecureLink::poslat` does.
    Task<Result<void>> poslat(MacPayload payload, std::string requestID);

  private:
    Task<void> listen(std::shared_ptr<SecureLink> link, std::stop_token stop);

    Executor& main_;
    TaskScope& scope_;
    Handler handler_;
    std::shared_ptr<SecureLink> spojeni_;
    std::shared_ptr<TaskScope> posluchac_;
    TaskScope odchazejici_; ///< links that go down
};

} // namespace morvex
