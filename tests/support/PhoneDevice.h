#pragma once

#include "foundation/Clock.h"
#include "foundation/Random.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/SecureChannel.h"
#include "shared/wire/Envelope.h"
#include "shared/wire/MacPayload.h"
#include "shared/wire/SessionHello.h"
#include "tests/support/Devices.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex::test {

/// The device at the other end of the pair, with keys and a channel of its own. The test carries its
/// envelopes to the link and those of the link to it.
class PhoneDevice {
  public:
    PhoneDevice(Random& random, const Clock& clock, DeviceID mac)
        : random_(random), clock_(clock), mac_(std::move(mac)) {}

    /// A hello with a new key, which the phone keeps.
    Envelope newHello();
    /// The hello with this key, signed by this device, whoever holds the key.
    [[nodiscard]] SessionHello helloWith(const AgreementPublicKey& ephemeral) const;
    /// Any bytes in an envelope for a hello.
    [[nodiscard]] Envelope keyExchangeWith(std::string bytes) const;

    /// Makes the channel from the key of the latest hello and the one in the hello of `mac`.
    void meet(const DeviceIdentity& mac, const Envelope& hello);

    Envelope seal(const MacPayload& payload, std::string requestID = "R-1");
    /// Any plaintext.
    Envelope sealText(std::string_view plaintext, EnvelopeKind kind = EnvelopeKind::data);
    Result<MacPayload> open(const Envelope& envelope);

    std::shared_ptr<const DeviceIdentity> identita = newIdentity();

  private:
    Random& random_;
    const Clock& clock_;
    DeviceID mac_;
    std::optional<EphemeralPrivateKey> ephemeral_;
    std::optional<SecureChannel> channel_;
};

} // namespace morvex::test
