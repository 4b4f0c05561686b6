#include "bench/Measure.h"
#include "shared/base/Require.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/SecureChannel.h"
#include "shared/wire/Json.h"
#include "shared/wire/MacPayload.h"
#include "shared/wire/RelayMessage.h"

#include MORVEX_BASICS

#include <openssl/evp.h>

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

// Measures the way of a file's content from the tool's result to the frame of the relay and from the frame to
// the result, compared with the unavoidable cost: ChaCha20-Poly1305 and base64 of the same bytes, by OpenSSL.

namespace morvex {
namespace {

constexpr std::size_t fileSize = 256 * 1024;
constexpr int rounds = 400;

/// As many whole lines as a result of a file tool may hold.
std::string fileOf(std::string_view line) {
    std::string text;
    while (text.size() + line.size() <= fileSize) text += line;
    return text;
}

/// The two ends of one session.
struct Session {
    struct Ends {
        SecureChannel mac;
        SecureChannel phone;
    };

    Ends ends = meet();
    SystemRandom random;
    Date now = dateFromSeconds(1'800'000'000);

    static PairedPeer peer(const DeviceIdentity& identity, DeviceRole role) {
        return {{"PAIR"}, "", identity.deviceID(), identity.signingKey(), identity.agreementKey(), role, {}};
    }

    static SecureChannel end(const DeviceIdentity& own, const EphemeralPrivateKey& ownKey,
                             const PairedPeer& other, const EphemeralPrivateKey& otherKey, DeviceRole role) {
        return SecureChannel::create(own.pairKey(other).value(), ownKey, otherKey.publicKey(),
                                     {other.pairID, own.deviceID(), other.deviceID, role})
            .value();
    }

    static Ends meet() {
        auto mac = DeviceIdentity::generate();
        auto phone = DeviceIdentity::generate();
        auto macKey = EphemeralPrivateKey::generate();
        auto phoneKey = EphemeralPrivateKey::generate();
        return {end(mac, macKey, peer(phone, DeviceRole::phone), phoneKey, DeviceRole::mac),
                end(phone, phoneKey, peer(mac, DeviceRole::mac), macKey, DeviceRole::phone)};
    }

    std::string frameOf(const std::string& plaintext) {
        auto envelope = ends.mac.seal(asBytes(plaintext), "request", EnvelopeKind::data, envelopeLifetime,
                                      {now, random.uuid()});
        return encode(RelayMessage{RelayMessage::Forward{*std::move(envelope)}});
    }

    Bytes plaintextOf(const std::string& frame) {
        auto message = decode<RelayMessage>(frame).value();
        return ends.phone.open(message.as<RelayMessage::Forward>()->envelope, now).value();
    }
};

/// Processes the same bytes with OpenSSL alone, in reused buffers.
class Baseline {
  public:
    explicit Baseline(const std::string& plaintext)
        : plaintext_(plaintext),
          sealed_(plaintext.size()),
          text_((plaintext.size() + 2) / 3 * 4 + 1),
          decoded_(text_.size()) {}

    void seal() {
        run(EVP_EncryptInit_ex2, EVP_EncryptUpdate, asBytes(plaintext_).data(), sealed_.data());
        EVP_EncodeBlock(text_.data(), sealed_.data(), size());
    }

    void open() {
        EVP_DecodeBlock(decoded_.data(), text_.data(), static_cast<int>(text_.size() - 1));
        run(EVP_DecryptInit_ex2, EVP_DecryptUpdate, decoded_.data(), sealed_.data());
    }

  private:
    void run(auto init, auto update, const std::uint8_t* from, std::uint8_t* to) {
        int written = 0;
        require(init(context_.get(), EVP_chacha20_poly1305(), key_.data(), nonce_.data(), nullptr) == 1 &&
                    update(context_.get(), to, &written, from, size()) == 1 && written == size(),
                "OpenSSL does not encrypt");
    }

    [[nodiscard]] int size() const { return static_cast<int>(plaintext_.size()); }

    std::string plaintext_;
    Bytes sealed_;
    Bytes text_;
    Bytes decoded_;
    Bytes key_ = Bytes(32, 1);
    Bytes nonce_ = Bytes(12, 2);
    std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context_{EVP_CIPHER_CTX_new(),
                                                                             EVP_CIPHER_CTX_free};
};

void bench(const char* name, std::string_view line) {
    auto json = encode(boost::json::object{{"content", fileOf(line)}});
    MacPayload payload{MacPayload::ToolResult{true, std::move(json)}};
    Session session;
    auto plaintext = encode(payload);
    Baseline baseline(plaintext);
    std::string frame;
    Bytes arrived;
    auto took = costs(
        rounds, {[&] { frame = session.frameOf(plaintext); }, [&] { arrived = session.plaintextOf(frame); },
                 [&] { baseline.seal(); }, [&] { baseline.open(); }, [&] { plaintext = encode(payload); },
                 [&] { require(decode<MacPayload>(arrived) == payload, "the result changed"); }});
    auto least = took[2].processor + took[3].processor;
    std::printf("256 KiB of %s: seal + encode %.3f ms (%.2f times), decode + open %.3f ms (%.2f times), both "
                "%.2f times; OpenSSL %.3f + %.3f ms\n",
                name, took[0].processor, took[0].processor / took[2].processor, took[1].processor,
                took[1].processor / took[3].processor, (took[0].processor + took[1].processor) / least,
                took[2].processor, took[3].processor);
    std::printf("  and the JSON of the result within: written in %.3f ms, read in %.3f ms (all together %.2f "
                "times)\n",
                took[4].processor, took[5].processor,
                (took[0].processor + took[1].processor + took[4].processor + took[5].processor) / least);
}

} // namespace
} // namespace morvex

int main() {
    morvex::bench("program text",
                  "    if (auto found = table.find(name)) return found->second; // the newest\n");
    morvex::bench("Czech text", "Příliš žluťoučký kůň úpěl ďábelské ódy, řekl „tiše“ a šel.\n");
}
