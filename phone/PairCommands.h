#pragma once

#include "phone/Phone.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/PairedPeer.h"

#include <memory>

namespace morvex::commands {

/// This phone and its Mac.
struct Paired {
    std::shared_ptr<const DeviceIdentity> identita;
    PairedPeer mac;
};

/// Fails with `ExitCode::notPaired` when no pairing is stored.
Result<Paired> loadPaired(IdentityStore& store);

/// Joins the pair of a QR code, shows the number and stores the Mac once the number is confirmed.
Task<Result<void>> pair(Phone& phone);

/// Ends the pair at the relay, and forgets the Mac even if that fails.
Task<Result<void>> unpair(Phone& phone);

} // namespace morvex::commands
