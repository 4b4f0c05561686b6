#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Date.h"
#include "shared/wire/Codec.h"
#include "shared/wire/DeviceRole.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

#include <optional>
#include <string>

namespace morvex {

/// POST v1/pair/create: makes a pair.
struct ZalozitPozadavek {
    DeviceID deviceID;
    SigningPublicKey key;
    DeviceRole role = DeviceRole::mac;

    bool operator==(const ZalozitPozadavek&) const = default;
};

struct ZalozitOdpoved {
    PairID pairID;
    std::string pairingToken; ///< secret; good for one join
    Date expiresAt;

    bool operator==(const ZalozitOdpoved&) const = default;
};

/// POST v1/pair/join: the second device joins.
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

/// POST v1/device/revoke: shuts a device out of its pair. The reply has no body that is read.
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
