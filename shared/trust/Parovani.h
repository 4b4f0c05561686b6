#pragma once

#include "shared/trust/Fingerprint.h"
#include "shared/trust/PrivateKey.h"
#include "shared/trust/SymmetricKey.h"
#include "shared/wire/PairingBundle.h"
#include "shared/wire/PairingHello.h"

#include <string>
#include <string_view>

namespace morvex {

class DeviceIdentity;

} // namespace morvex

/// How two devices that trust nothing yet come to share a long-term key:
///
///     computer                                             phone
///        │  QR code: qrText(bundle) ──────────────────────▶  │ bundleOf(text)
///        │  ◀──────────── key exchange envelope: makeHello() │
///     checkHello()                                           │
///     pairKey(), comparisonNumber()      pairKey(), comparisonNumber()
///        └──────── the user compares the two numbers ────────┘
///
/// The phone trusts the computer by the QR code, the computer trusts the phone by the number.
namespace morvex::Parovani {

/// The request id of the hello's envelope.
inline constexpr std::string_view requestID = "parovani";

/// The text of the QR code: JSON with sorted keys and nothing around it.
std::string qrText(const PairingBundle& bundle);
/// Any failure, an unreadable version too, fails the whole.
Result<PairingBundle> bundleOf(std::string_view qrText);

/// What the signature of a hello covers.
std::string helloSignedText(const PairID& pairID, const DeviceID& device,
                            const AgreementPublicKey& agreementKey);
PairingHello makeHello(const DeviceIdentity& identity, const PairID& pairID);
/// True when the hello names the device of its signing key and that key signed it for this pair. The name is
/// checked first: a hello under another name costs no signature work.
bool checkHello(const PairingHello& hello, const PairID& pairID, SignatureCheck verify = ed25519Verify);

/// The same on both devices, whichever computes it. Fails with `CryptoError` for an unsafe key of the peer.
Result<PairKey> pairKey(const AgreementPrivateKey& dohodovy, const AgreementPublicKey& peerKey,
                        const DeviceID& device, const DeviceID& peer);

/// What the user compares: six digits in two groups, such as "068 854".
std::string comparisonNumber(const PairKey& pairKey);
/// The number as it follows from its four derived bytes.
std::string comparisonNumber(std::span<const std::uint8_t, 4> derived);

} // namespace morvex::Parovani
