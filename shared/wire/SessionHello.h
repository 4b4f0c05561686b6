#pragma once

#include "shared/base/Bytes.h"
#include "shared/wire/Codec.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

namespace morvex {

/// One side's signed key offer for one session.
struct SessionHello {
    DeviceID device;
    AgreementPublicKey ephemeral;
    Bytes signature;

    bool operator==(const SessionHello&) const = default;
};

extern template struct Codec<SessionHello>;

} // namespace morvex
