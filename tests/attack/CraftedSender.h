#pragma once

#include "shared/trust/SecureChannel.h"

#include <algorithm>
#include <string>
#include <utility>

namespace morvex {

/// A sender that has the session's keys and seals with any counter and identity, unlike a genuine sender, so
/// that only the receiver's own rules decide.
class CraftedSender {
  public:
    CraftedSender()
        : keys_(SessionKeys::derive(pairKey(), key_, peerKey_.publicKey(), DeviceRole::mac).value()) {}

    /// A receiver that has accepted no message yet.
    [[nodiscard]] SecureChannel receiver() const {
        return SecureChannel::create(pairKey(), peerKey_, key_.publicKey(),
                                     {{"PAIR"}, {"PHONE"}, {"MAC"}, DeviceRole::phone})
            .value();
    }

    [[nodiscard]] Envelope seal(std::uint64_t counter, std::string msgID, Date now,
                                std::string requestID = "request") const {
        Envelope envelope = keyExchange({"PAIR"}, {"MAC"}, {"PHONE"}, std::move(requestID), {}, now, {});
        envelope.kind = EnvelopeKind::data;
        envelope.msgID = std::move(msgID);
        envelope.counter = counter;
        envelope.nonce.resize(nonceSize);
        auto sealed = chachaSeal(keys_.odesilaci.view(), envelope.nonce, asBytes(associatedData(envelope)),
                                 asBytes("text"))
                          .value();
        envelope.ciphertext = std::move(sealed.ciphertext);
        envelope.tag = std::move(sealed.tag);
        return envelope;
    }

  private:
    static PairKey pairKey() {
        SecretKeyBytes bytes;
        std::ranges::fill(bytes.writable(), std::uint8_t{7});
        return PairKey(std::move(bytes));
    }

    EphemeralPrivateKey key_ = EphemeralPrivateKey::generate();
    EphemeralPrivateKey peerKey_ = EphemeralPrivateKey::generate();
    SessionKeys keys_;
};

} // namespace morvex
