#pragma once

#include "shared-apple/IdentityStore.h"

#include <memory>

namespace morvex {

/// Loads this device's keys, or makes and stores new ones. Remains of an older identity are erased first: if
/// the program ends between storing the two keys, the store then holds no identity, never one that mixes old
/// and new keys. May block as the store does.
Result<std::shared_ptr<const DeviceIdentity>> ownIdentity(IdentityStore& store);

} // namespace morvex
