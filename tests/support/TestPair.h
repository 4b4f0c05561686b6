#pragma once

#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Revocation.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "shared/wire/RelayMessage.h"
#include "tests/support/SampleEnvelope.h"

#include <string>
#include <utility>

namespace morvex {

/// Two devices and what they say to a relay.
struct TestPair {
    DeviceIdentity mac = DeviceIdentity::generate();
    DeviceIdentity phone = DeviceIdentity::generate();
    PairID id{"PAIR"};

    [[nodiscard]] static std::string create(const DeviceIdentity& device, DeviceRole role = DeviceRole::mac) {
        return encode(ZalozitPozadavek{device.deviceID(), device.signingKey(), role});
    }

    [[nodiscard]] static std::string join(const DeviceIdentity& device, std::string token,
                                          DeviceRole role = DeviceRole::phone) {
        return encode(PripojitPozadavek{std::move(token), device.deviceID(), device.signingKey(), role});
    }

    [[nodiscard]] std::string revoke(const DeviceIdentity& by, const DeviceID& target, Date signedAt) const {
        const auto text = revocationSignedText(id, target, by.deviceID(), signedAt);
        return encode(OdvolatPozadavek{id, target, by.deviceID(), signedAt, by.sign(asBytes(text))});
    }

    [[nodiscard]] std::string authenticate(const DeviceIdentity& device, ByteView nonce) const {
        return encode(RelayMessage{
            RelayMessage::Authenticate{id, device.deviceID(), device.signingKey(), device.sign(nonce)}});
    }

    [[nodiscard]] Envelope envelope(const DeviceIdentity& from, const DeviceIdentity& to) const {
        return sampleEnvelope(id, from.deviceID(), to.deviceID(), Bytes(64, 2));
    }

    /// A frame with an envelope, `size` bytes of content in it.
    [[nodiscard]] std::string frame(const DeviceIdentity& from, const DeviceIdentity& to,
                                    std::uint64_t counter = 1, std::size_t size = 64) const {
        auto filled = envelope(from, to);
        filled.counter = counter;
        filled.ciphertext.assign(size, 2);
        return encode(RelayMessage{RelayMessage::Forward{filled}});
    }

    [[nodiscard]] std::string fromMac() const { return frame(mac, phone); }

    [[nodiscard]] std::string fromPhone() const { return frame(phone, mac); }
};

} // namespace morvex
