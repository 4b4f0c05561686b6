#pragma once

#include "shared/base/Bytes.h"

namespace morvex {

/// Whether 32 bytes can be an Ed25519 public key that somebody owns. Refuses the points of small order, under
/// which signatures can be made without a private key, and every encoding that RFC 8032, section 5.1.3, does
/// not decode: a y of p or more, and a sign of x where x is 0. Whether the bytes are a point of the curve is
/// left to the verification, since no signature verifies otherwise.
///
/// A key that is the sum of an honest key and a point of small order is accepted: signing for it takes the
/// honest private key, so it has an owner, and it has its own fingerprint.
bool isUsableSigningKey(ByteView publicKey);

} // namespace morvex
