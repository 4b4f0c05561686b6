#pragma once

#include "shared/base/Sentence.h"
#include "shared/trust/OutgoingCounter.h"
#include "shared/trust/SessionKeys.h"
#include "shared/trust/VideneZpravy.h"
#include "shared/wire/Envelope.h"

#include <chrono>
#include <string>

namespace morvex {

/// The end-to-end encryption of one session: seals what goes to the peer and opens what comes from it,
/// refusing what is foreign, late, repeated or changed. An owner makes one after each exchange of session
/// hellos and drops it with the connection; it is never reset. It has no thread of its own: the owner calls
/// it from one thread at a time.
class SecureChannel {
  public:
    struct Ends {
        PairID pair;
        DeviceID mujID;
        DeviceID protejsek;
        DeviceRole role; ///< of this device
    };

    /// What the caller gives to each sealed envelope.
    struct Stamp {
        Date now;
        Uuid msgID; ///< fresh and random
    };

    /// Why an envelope was refused.
    struct Chyba {
        enum class Duvod {
            cizi,         ///< addressed otherwise; `text` says how
            prehrani,     ///< the counter is not new, or the identity was seen
            prosla,       ///< outside its time window
            neoveritelna, ///< bad nonce, or authentication failed
        };

        Duvod duvod;
        Sentence text = {};

        [[nodiscard]] Sentence popis() const;
        bool operator==(const Chyba&) const = default;
    };

    /// How much the clocks of the two devices may differ.
    static constexpr std::chrono::seconds clockTolerance{30};

    /// Fails with `CryptoError` when the peer's ephemeral key is not safe.
    static Result<SecureChannel> create(const PairKey& pairKey, const EphemeralPrivateKey& mujEfemerni,
                                        const AgreementPublicKey& peerEphemeral, Ends ends);

    /// Takes the next counter, whether or not the rest succeeds. Fails with `AmbiguousIdentity` for a request
    /// id with a "|", and for content of 2 GiB and more.
    Result<Envelope> seal(ByteView plaintext, std::string requestID, EnvelopeKind kind,
                          std::chrono::seconds lifetime, Stamp stamp);

    /// Fails with `Chyba`, but for a tag of the wrong size with `CryptoError`, and for a genuine envelope
    /// whose message or request id has a "|" with `AmbiguousIdentity`. A refused envelope changes nothing:
    /// the genuine one with its counter is still accepted. There is no window for reordering: an envelope
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
