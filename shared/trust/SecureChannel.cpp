#include "shared/trust/SecureChannel.h"

#include "shared/base/Try.h"
#include "shared/trust/CryptoError.h"

#include <utility>

namespace morvex {

namespace {

using Chyba = SecureChannel::Chyba;
using Duvod = Chyba::Duvod;

Bytes nonceOf(std::uint64_t counter) {
    Bytes nonce(nonceSize);
    for (std::size_t i = nonceSize; counter != 0; counter >>= 8)
        nonce[--i] = static_cast<std::uint8_t>(counter);
    return nonce;
}

} // namespace

Sentence SecureChannel::Chyba::popis() const {
    switch (duvod) {
    case Duvod::cizi:
        return text;
    case Duvod::prehrani:
        return "Zpráva se opakuje nebo dorazila mimo pořadí."_sentence;
    case Duvod::prosla:
        return "Zpráva dorazila mimo dobu své platnosti. Zkontroluj hodiny na obou zařízeních."_sentence;
    case Duvod::neoveritelna:
        return "Zpráva není zašifrovaná pro tohle spojení, nebo ji někdo změnil."_sentence;
    }
    std::unreachable();
}

SecureChannel::SecureChannel(SessionKeys keys, Ends ends)
    : odesilaci_(std::move(keys.odesilaci)),
      prijimaci_(std::move(keys.prijimaci)),
      pair_(std::move(ends.pair)),
      mujID_(std::move(ends.mujID)),
      protejsek_(std::move(ends.protejsek)) {}

Result<SecureChannel> SecureChannel::create(const PairKey& pairKey, const EphemeralPrivateKey& mujEfemerni,
                                            const AgreementPublicKey& peerEphemeral, Ends ends) {
    TRY(auto, keys, SessionKeys::derive(pairKey, mujEfemerni, peerEphemeral, ends.role));
    return SecureChannel(std::move(keys), std::move(ends));
}

Result<Envelope> SecureChannel::seal(ByteView plaintext, std::string requestID, EnvelopeKind kind,
                                     std::chrono::seconds lifetime, Stamp stamp) {
    auto counter = odchoziPocitadlo_.next();
    Envelope envelope{
        .v = ProtocolVersion::current,
        .pair = pair_,
        .from = mujID_,
        .to = protejsek_,
        .msgID = stamp.msgID.text(),
        .requestID = std::move(requestID),
        .kind = kind,
        .createdAt = stamp.now,
        .expiresAt = stamp.now + lifetime,
        .counter = counter,
        .nonce = nonceOf(counter),
        .ciphertext = {},
        .tag = {},
    };
    if (!isUnambiguous(envelope)) return fail(AmbiguousIdentity{});
    TRY(auto, sealed,
        chachaSeal(odesilaci_.view(), envelope.nonce, asBytes(associatedData(envelope)), plaintext));
    envelope.ciphertext = std::move(sealed.ciphertext);
    envelope.tag = std::move(sealed.tag);
    return envelope;
}

Result<void> SecureChannel::checkBeforeOpening(const Envelope& envelope, Date now) const {
    if (envelope.pair != pair_) return fail(Chyba{Duvod::cizi, "Obálka patří jinému páru."_sentence});
    if (envelope.from != protejsek_)
        return fail(Chyba{Duvod::cizi, "Obálka je od jiného zařízení."_sentence});
    if (envelope.to != mujID_) return fail(Chyba{Duvod::cizi, "Obálka není pro mě."_sentence});
    if (now > envelope.expiresAt + clockTolerance || now < envelope.createdAt - clockTolerance)
        return fail(Chyba{Duvod::prosla});
    if (envelope.counter <= poslednPrichozi_ || videneZpravy_.obsahuje(envelope.msgID))
        return fail(Chyba{Duvod::prehrani});
    if (envelope.nonce.size() != nonceSize) return fail(Chyba{Duvod::neoveritelna});
    return {};
}

Result<Bytes> SecureChannel::open(const Envelope& envelope, Date now) {
    CHECK(checkBeforeOpening(envelope, now));
    // The nonce comes from the sender and need not match the counter; the tag authenticates it.
    auto plaintext = chachaOpen(prijimaci_.view(), envelope.nonce, asBytes(associatedData(envelope)),
                                envelope.ciphertext, envelope.tag);
    if (!plaintext) {
        auto* cause = plaintext.error().as<CryptoError>();
        if (cause && cause->failure == CryptoFailure::wrongTag) return plaintext;
        return fail(Chyba{Duvod::neoveritelna});
    }
    if (!isUnambiguous(envelope)) return fail(AmbiguousIdentity{});
    poslednPrichozi_ = envelope.counter;
    videneZpravy_.insert(envelope.msgID);
    return plaintext;
}

} // namespace morvex
