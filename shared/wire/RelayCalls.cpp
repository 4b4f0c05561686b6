#include "shared/wire/RelayCalls.h"

#include "shared/wire/Describe.h"

namespace morvex {

void describe(auto& io, Is<ZalozitPozadavek> auto& request) {
    io.required("deviceID", request.deviceID);
    io.required("key", request.key);
    io.required("role", request.role);
}

void describe(auto& io, Is<ZalozitOdpoved> auto& reply) {
    io.required("pairID", reply.pairID);
    io.required("pairingToken", reply.pairingToken);
    io.required("expiresAt", reply.expiresAt);
}

void describe(auto& io, Is<PripojitPozadavek> auto& request) {
    io.required("pairingToken", request.pairingToken);
    io.required("deviceID", request.deviceID);
    io.required("key", request.key);
    io.required("role", request.role);
}

void describe(auto& io, Is<PripojitOdpoved> auto& reply) {
    io.required("pairID", reply.pairID);
}

void describe(auto& io, Is<OdvolatPozadavek> auto& request) {
    io.required("pairID", request.pairID);
    io.required("target", request.target);
    io.required("by", request.by);
    io.required("signedAt", request.signedAt);
    io.required("signature", request.signature);
}

void describe(auto& io, Is<VaporDuvod> auto& refusal) {
    io.optional("reason", refusal.reason);
}

template struct Codec<ZalozitPozadavek>;
template struct Codec<ZalozitOdpoved>;
template struct Codec<PripojitPozadavek>;
template struct Codec<PripojitOdpoved>;
template struct Codec<OdvolatPozadavek>;
template struct Codec<VaporDuvod>;

} // namespace morvex
