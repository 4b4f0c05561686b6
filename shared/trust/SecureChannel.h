#pragma once

#include "shared/base/Sentence.h"
#include "shared/trust/OutgoingCounter.h"
#include "shared/trust/SessionKeys.h"
#include "shared/trust/VideneZpravy.h"
#include "shared/wire/Envelope.h"

#include <chrono>
#include <string>

namespace morvex {

/// The end-to-end encryption of one session: seals messages to the peer and opens messages from it; refuses
/// those that are addressed otherwise, late, repeated or changed. The owner makes one after each exchange of
/// session hellos and drops it with the connection; it is never reset. It has no thread of its own: the owner
/// must call it from one thread at a time.
class SecureChannel {
  public:
    struct Ends {
        PairID pair;
        DeviceID mujID;
        DeviceID protejsek;
        DeviceRole role; ///< role of this device
    };

    /// What the caller supplies for each sealed envelope.
    struct Stamp {
        Date now;
        Uuid msgID; ///< fresh and random
    };

    /// Why an envelope was refused.
    struct Chyba {
        enum class Duvod {
            cizi,         ///< wrong addressing; `text` says how
            prehrani,     ///< the counter is not new, or the message id was seen before
            prosla,       ///< outside its time window
            neoveritelna, ///< bad nonce, or authentication failed
        };

        Duvod duvod;
        Sentence text = {};

        [[nodiscard]] Sentence popis() const;
        bool operator==(const Chyba&) const = default;
    };

    /// The largest accepted difference between the clocks of the two devices.
    static constexpr std::chrono::seconds clockTolerance{30};

    /// Fails with `CryptoError` if the peer's ephemeral key is unsafe.
    static Result<SecureChannel> create(const PairKey& pairKey, const EphemeralPrivateKey& mujEfemerni,
                                        const AgreementPublicKey& peerEphemeral, Ends ends);

    /// Uses up the next counter even when the call fails. Fails with `AmbiguousIdentity` if the request id
    /// contains a "|", and for content of 2 GiB or more.
    Result<Envelope> seal(ByteView plaintext, std::string requestID, EnvelopeKind kind,
                          std::chrono::seconds lifetime, Stamp stamp);

    /// Fails with `Chyba`; with `CryptoError` for a tag of the wrong size; with `AmbiguousIdentity` for a
    /// genuine envelope whose message or request id contains a "|". A refused envelope changes nothing: the
    /// genuine one with the same counter is still accepted. There is no window for reordering: an envelope
    /// that was overtaken is lost.
    Result<Bytes> open(const Envelope& envelope, Date now);

  private:
    SecureChannel(SessionKeys keys, Ends ends);

    [[nodiscard]] Result<void> checkBeforeOpening(const Envelope& envelope, Date now) const;

    ChannelKey odesilaci_;
    ChannelKey prijimaci_;
    PairID pair_;
    DeviceID mujID_;
    DeviceID protejsek_;
    OutgoingCounter odchoziPocitadlo_;
    std::uint64_t poslednPrichozi_ = 0;
    VideneZpravy videneZpravy_;
};

} // namespace morvex
