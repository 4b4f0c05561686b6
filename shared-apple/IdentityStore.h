#pragma once

#include "shared/base/Error.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/PairedPeer.h"

#include <memory>
#include <optional>

namespace morvex {

/// The store of this device's keys and of its paired peer. Calls may block. Any thread may call, but only one
/// at a time.
class IdentityStore {
  public:
    virtual ~IdentityStore() = default;

    /// Null when the stored identity is missing or incomplete.
    virtual Result<std::shared_ptr<const DeviceIdentity>> nactiIdentitu() = 0;
    virtual Result<void> ulozIdentitu(std::shared_ptr<const DeviceIdentity> identita) = 0;
    virtual Result<void> smazIdentitu() = 0;

    virtual Result<std::optional<PairedPeer>> nactiProtejsek() = 0;
    virtual Result<void> ulozProtejsek(const PairedPeer& protejsek) = 0;
    virtual Result<void> smazProtejsek() = 0;
};

} // namespace morvex
