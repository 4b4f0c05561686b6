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
/// until the user has decided. Stores nothing. Order of calls: `create`, `join`, `untilIntroduced`, then
/// `heard` for events during the question; await `leave` before destroying the object. Use on the phone's
/// executor.
class PhonePairing {
  public:
    /// Checks the text of the QR code. Fails with a `PhoneError`.
    static Result<std::unique_ptr<PhonePairing>> create(const std::string& qrText,
                                                        std::shared_ptr<const DeviceIdentity> identita,
                                                        SecureLink::Services services, Inbox& inbox);

    /// The number that the user compares with the one in the Mac's window.
    [[nodiscard]] const std::string& number() const { return number_; }

    Task<Result<void>> join(HttpClient& http);

    /// Waits until the Mac is online and the introduction was sent.
    Task<Result<void>> untilIntroduced(Clock::Duration limit);

    /// Sends the introduction again to a Mac that came back, since the last one may have been lost. Fails
    /// when the relay refuses.
    Task<Result<void>> heard(RelayLink::Udalost event);

    /// The Mac's record to store after the user has confirmed the number.
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
    std::string trouble_;    ///< failure of the last connection
    RelayLink::Login login_; ///< the last one reported
    bool isAtRelay_ = false;
    bool isIntroduced_ = false;
};

} // namespace morvex
