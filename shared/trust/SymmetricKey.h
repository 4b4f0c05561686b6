#pragma once

#include "shared/trust/Crypto.h"

#include <utility>

namespace morvex {

/// A secret key of 32 bytes for one purpose. `Purpose` is part of the type so that keys of two purposes
/// cannot be confused.
template <class Purpose> class SymmetricKey {
  public:
    explicit SymmetricKey(SecretKeyBytes bytes) : bytes_(std::move(bytes)) {}

    /// For the cryptographic functions; do not copy the bytes.
    [[nodiscard]] KeyView view() const { return bytes_.view(); }

  private:
    SecretKeyBytes bytes_;
};

/// The long-term secret of two paired devices.
using PairKey = SymmetricKey<struct PairPurpose>;
/// The secret of one direction of one session.
using ChannelKey = SymmetricKey<struct ChannelPurpose>;

} // namespace morvex
