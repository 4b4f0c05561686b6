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

/// The request id of the envelope that carries the hello.
inline constexpr std::string_view requestID = "parovani";

/// The text of the QR code: JSON with sorted keys and nothing around it.
std::string qrText(const PairingBundle& bundle);
/// Fails if any part fails, also for a version that cannot be read.
Result<PairingBundle> bundleOf(std::string_view qrText);

/// The text that the signature of a hello covers.
std::string helloSignedText(const PairID& pairID, const DeviceID& device,
                            const AgreementPublicKey& agreementKey);
PairingHello makeHello(const DeviceIdentity& identity, const PairID& pairID);
/// True when the hello names the device of its signing key and that key signed it for this pair. The name is
/// checked first: a hello under another name costs no signature work.
bool checkHello(const PairingHello& hello, const PairID& pairID, SignatureCheck verify = ed25519Verify);

/// Both devices compute the same key. Fails with `CryptoError` if the peer's key is unsafe.
Result<PairKey> pairKey(const AgreementPrivateKey& dohodovy, const AgreementPublicKey& peerKey,
                        const DeviceID& device, const DeviceID& peer);

/// The number that the user compares: six digits in two groups, such as "068 854".
std::string comparisonNumber(const PairKey& pairKey);
/// The number for these four derived bytes.
std::string comparisonNumber(std::span<const std::uint8_t, 4> derived);

} // namespace morvex::Parovani
