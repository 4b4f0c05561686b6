#pragma once

#include "shared-apple/IdentityStore.h"

#include <memory>

namespace morvex {

/// The keys of this device: those that are stored, else new ones, which are stored then. What is left of
/// another identity is erased before, so that a program that ends between the two keys leaves no identity,
/// and never one with a key of each. May block as the store does.
Result<std::shared_ptr<const DeviceIdentity>> ownIdentity(IdentityStore& store);

} // namespace morvex
