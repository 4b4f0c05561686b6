#include "shared/wire/Json.h"
#include "tests/support/Devices.h"
#include "tests/support/Effort.h"
#include "tests/support/SecureLinkFixture.h"

#include <algorithm>
#include <random>
#include <set>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

Task<void> dropEvents(std::shared_ptr<SecureLink> link, std::stop_token stop) {
    while (co_await link->udalosti().next(stop)) {
    }
}

/// A computer that restarts, reconnects and draws new keys while a relay repeats old hellos of its phone.
/// Both ends of a session seal messages.
///
/// A key and a nonce determine one key stream, which is combined with the plaintext (RFC 8439, section 2.4).
/// The test knows the plaintexts, so it can compute the streams: a stream that occurs twice reveals a reused
/// nonce.
class NonceReuse : public test::SecureLinkFixture {
  protected:
    void step() {
        switch (random_() % 10) {
        case 0:
            return loseTheSocket();
        case 1:
            return restart();
        case 2:
            return relay(RelayMessage::PeerOnline{random_() % 2 == 0});
        case 3:
            return deliverNewHello();
        case 4:
        case 5:
            return deliverOldHello();
        default:
            send();
        }
    }

    std::size_t sessions_ = 0;
    std::set<Bytes> streams_;

  private:
    void loseTheSocket() {
        socket->breakWith("pryč");
        executor.runUntilIdle();
        reconnect(1s);
        logInAgain();
    }

    void restart() {
        EXPECT_TRUE(executor.run(link->zastavit()));
        if (random_() % 2 == 0) startTheProgramAgain();
        connect();
        logInAgain();
    }

    /// Keeps only the long-term keys.
    void startTheProgramAgain() {
        link = SecureLink::create(identita, test::remembered(*phone.identita, DeviceRole::phone),
                                  DeviceRole::mac, {{executor, clock, sockets}, random})
                   .value();
        executor.start(dropEvents(link, listening.get_token()));
    }

    void logInAgain() { relay(RelayMessage::Authenticated{random_() % 4 != 0}); }

    void deliverNewHello() {
        hellos_.push_back(phone.newHello());
        relay(hellos_.back());
        if (sentHellos().empty()) return;
        phone.meet(*identita, sentHellos().back());
        hasPhoneMet_ = true;
    }

    void deliverOldHello() {
        if (hellos_.empty()) return;
        const auto back = random_() % std::min<std::size_t>(hellos_.size(), 8);
        relay(hellos_[hellos_.size() - 1 - back]);
    }

    void send() {
        for (auto count = random_() % 4; count > 0; --count) {
            const auto payload = note(std::to_string(random_()));
            if (poslat(payload)) collect(sentEnvelopes().back(), encode(payload));
            if (hasPhoneMet_) collect(phone.seal(payload), encode(payload));
        }
    }

    void collect(const Envelope& envelope, const std::string& plaintext) {
        if (envelope.counter == 1) ++sessions_;
        Bytes stream = envelope.ciphertext;
        ASSERT_EQ(stream.size(), plaintext.size());
        for (std::size_t i = 0; i < stream.size(); ++i) stream[i] ^= static_cast<std::uint8_t>(plaintext[i]);
        stream.resize(32);
        EXPECT_TRUE(streams_.insert(std::move(stream)).second) << "a nonce served twice under one key";
    }

    bool hasPhoneMet_ = false;
    std::mt19937_64 random_{seed(4)};
    std::vector<Envelope> hellos_;
};

TEST_F(NonceReuse, NoNonceServesTwiceUnderOneKey) {
    const auto steps = cases(2'000, 200'000);
    logIn();
    for (std::size_t i = 0; i < steps && !HasFailure(); ++i) step();
    EXPECT_GT(sessions_, steps / 50);
    tell("sealed messages over restarts, new keys and repeated hellos", streams_.size(),
         "no nonce twice under one key in " + std::to_string(sessions_) + " sessions, seed " +
             std::to_string(seed(4)));
}

} // namespace
} // namespace morvex
