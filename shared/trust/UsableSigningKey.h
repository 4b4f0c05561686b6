#pragma once

#include "shared/base/Bytes.h"

namespace morvex {

/// Whether 32 bytes can be the Ed25519 public key of somebody. Refused are the points of small order, under
/// which signatures can be made without a private key, and every encoding that RFC 8032, section 5.1.3, does
/// not decode: a y of p or more, and a sign of x where x is 0. That the bytes are a point of the curve is
/// left to the verification, which no signature passes without one.
///
/// A key with a part of small order beside an honest one is accepted: signing for it takes the private key of
/// the honest part, so it has an owner, and its fingerprint is one of its own.
bool isUsableSigningKey(ByteView publicKey);

} // namespace morvex
