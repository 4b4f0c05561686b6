#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Date.h"
#include "shared/wire/Codec.h"
#include "shared/wire/DeviceRole.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The paths of the relay, relative to its base address.
namespace relayPaths {
inline constexpr std::string_view socket = "v1/ws";
inline constexpr std::string_view createPair = "v1/pair/create";
inline constexpr std::string_view joinPair = "v1/pair/join";
inline constexpr std::string_view revokeDevice = "v1/device/revoke";

/// Whether `path`, the path of a request with its leading slash, is `address`.
constexpr bool isAt(std::string_view path, std::string_view address) {
    return path.starts_with('/') && path.substr(1) == address;
}
} // namespace relayPaths

/// POST to `createPair`: makes a pair.
struct ZalozitPozadavek {
    DeviceID deviceID;
    SigningPublicKey key;
    DeviceRole role = DeviceRole::mac;

    bool operator==(const ZalozitPozadavek&) const = default;
};

struct ZalozitOdpoved {
    PairID pairID;
    std::string pairingToken; ///< secret; valid for one join
    Date expiresAt;

    bool operator==(const ZalozitOdpoved&) const = default;
};

/// POST to `joinPair`: the second device joins.
struct PripojitPozadavek {
    std::string pairingToken;
    DeviceID deviceID;
    SigningPublicKey key;
    DeviceRole role = DeviceRole::phone;

    bool operator==(const PripojitPozadavek&) const = default;
};

struct PripojitOdpoved {
    PairID pairID;

    bool operator==(const PripojitOdpoved&) const = default;
};

/// POST to `revokeDevice`: removes a device from its pair. The body of the reply is not read.
struct OdvolatPozadavek {
    PairID pairID;
    DeviceID target;
    DeviceID by;
    Date signedAt;
    Bytes signature;

    bool operator==(const OdvolatPozadavek&) const = default;
};

/// The body of any refusal.
struct VaporDuvod {
    std::optional<std::string> reason;

    bool operator==(const VaporDuvod&) const = default;
};

extern template struct Codec<ZalozitPozadavek>;
extern template struct Codec<ZalozitOdpoved>;
extern template struct Codec<PripojitPozadavek>;
extern template struct Codec<PripojitOdpoved>;
extern template struct Codec<OdvolatPozadavek>;
extern template struct Codec<VaporDuvod>;

} // namespace morvex
