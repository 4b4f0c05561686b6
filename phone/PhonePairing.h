#pragma once

#include "foundation/TaskScope.h"
#include "phone/Inbox.h"
#include "platform/ports/HttpClient.h"
#include "shared-apple/RelayLink.h"
#include "shared-apple/SecureLink.h"
#include "shared/wire/PairedPeer.h"
#include "shared/wire/PairingBundle.h"

#include <memory>
#include <string>

namespace morvex {

/// The phone's part of a pairing: joins the pair of a QR code at the relay and introduces itself to the Mac
/// until somebody decides. Stores nothing. `create`, `join`, then `untilIntroduced` and `heard` for what
/// comes during the question; `leave` is awaited before it goes. Lives on the phone's executor.
class PhonePairing {
  public:
    /// Checks the text of the QR code. Fails with a `PhoneError`.
    static Result<std::unique_ptr<PhonePairing>> create(const std::string& qrText,
                                                        std::shared_ptr<const DeviceIdentity> identita,
                                                        SecureLink::Services services, Inbox& inbox);

    /// What the user compares with the Mac's window.
    [[nodiscard]] const std::string& number() const { return number_; }

    Task<Result<void>> join(HttpClient& http);

    /// Waits until the Mac is there and has been sent the introduction.
    Task<Result<void>> untilIntroduced(Clock::Duration limit);

    /// Introduces this phone again to a Mac that came back: its last introduction may have been lost. Fails
    /// when the relay refuses.
    Task<Result<void>> heard(RelayLink::Udalost event);

    /// The Mac as it is stored once the user has confirmed the number.
    [[nodiscard]] PairedPeer mac(Date confirmed) const;

    Task<void> leave();

  private:
    PhonePairing(PairingBundle bundle, RelayAddress address, std::shared_ptr<const DeviceIdentity> identita,
                 std::string number, SecureLink::Services services, Inbox& inbox);

    Task<void> introduce();
    [[nodiscard]] std::unexpected<Error> unreachable() const;

    PairingBundle bundle_;
    RelayAddress address_;
    std::shared_ptr<const DeviceIdentity> identita_;
    std::string number_;
    SecureLink::Services services_;
    Inbox& inbox_;
    RelayLink link_;
    TaskScope forwarding_;
    std::string trouble_;    ///< of the last connection
    RelayLink::Login login_; ///< the last one that was told
    bool isAtRelay_ = false;
    bool isIntroduced_ = false;
};

} // namespace morvex
