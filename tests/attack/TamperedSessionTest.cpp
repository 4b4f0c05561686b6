#include "shared/wire/Json.h"
#include "tests/attack/Changes.h"
#include "tests/support/Effort.h"
#include "tests/support/SecureLinkFixture.h"

#include <algorithm>
#include <string>
#include <vector>

namespace morvex {
namespace {

/// A link that receives every change that a relay makes to a genuine frame.
class TamperedSession : public test::SecureLinkFixture {
  protected:
    static std::string frameOf(Envelope envelope) {
        return encode(RelayMessage{RelayMessage::Forward{std::move(envelope)}});
    }

    /// Delivers a frame as the relay wrote it. Returns the events that it causes.
    Udalosti arrive(std::string frame) {
        socket->deliver(std::move(frame));
        return takeEvents();
    }

    static bool isMessage(const Udalost& event) { return std::holds_alternative<SecureLink::Zprava>(event); }

    static bool isSession(const Udalost& event) {
        return std::holds_alternative<SecureLink::Pripraveno>(event);
    }

    static bool isLoss(const Udalost& event) {
        const auto* told = std::get_if<SecureLink::Stav>(&event);
        return told && told->stav.as<MacAvailability::Preruseno>();
    }

    /// Expects that the changed frame brings neither a message nor a session and that nothing is sent because
    /// of it. Returns whether the connection survived: an unreadable frame ends it.
    bool outlives(const std::string& changed) {
        const auto sent = socket->sent.size();
        const auto events = arrive(changed);
        EXPECT_TRUE(std::ranges::none_of(events, isMessage)) << changed;
        EXPECT_TRUE(std::ranges::none_of(events, isSession)) << changed;
        EXPECT_EQ(socket->sent.size(), sent) << changed;
        const bool isLost = std::ranges::any_of(events, isLoss);
        EXPECT_EQ(isLost, !decode<RelayMessage>(changed).has_value()) << changed;
        ++(isLost ? lost_ : refused_);
        return !isLost;
    }

    void logInAgain() {
        reconnect(std::chrono::seconds{1});
        relay(RelayMessage::Authenticated{true});
        takeEvents();
    }

    /// Tries a change of a genuine message, in a session. Afterwards the genuine one is accepted, or, when
    /// the connection has ended, one in the next session.
    void expectRefused(const MacPayload& payload, Envelope genuine, const std::string& changed) {
        if (!outlives(changed)) {
            EXPECT_TRUE(hasNoSession()) << changed;
            logInAgain();
            exchangeHellos();
            takeEvents();
            genuine = phone.seal(payload);
        }
        relay(std::move(genuine));
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(payload)})) << changed;
    }

    /// Tries a change of the phone's hello, without a session. Afterwards the genuine one is accepted.
    void expectHelloRefused(Envelope genuine, const std::string& changed) {
        if (!outlives(changed)) {
            logInAgain();
        } else {
            EXPECT_TRUE(hasNoSession()) << changed;
        }
        relay(std::move(genuine));
        EXPECT_TRUE(std::ranges::any_of(takeEvents(), isSession)) << changed;
        // Makes this device draw a new key, without a session.
        relay(RelayMessage::PeerOnline{true});
        takeEvents();
    }

    void tellRefused(const std::string& what) {
        tell(what, lost_ + refused_,
             std::to_string(lost_) + " ended the connection, " + std::to_string(refused_) +
                 " refused, the genuine one accepted after each");
    }

    /// Messages of three different forms.
    const std::vector<MacPayload> payloads{
        {MacPayload::ToolCall{"mac.files.write", R"({"path":"a.txt","content":"žluť"})"}},
        {MacPayload::ApprovalDecision{"A3F45126-91AE-49CF-A231-8EA42E787339", true, {}}},
        {MacPayload::ToolProgress{""}}};

    static constexpr auto sealedFields = {&Envelope::nonce, &Envelope::ciphertext, &Envelope::tag};

  private:
    std::size_t lost_ = 0;
    std::size_t refused_ = 0;
};

TEST_F(TamperedSession, NoBitOfASessionHelloMayChange) {
    logIn();
    takeEvents();
    const auto genuine = phone.newHello();
    withEveryBitChanged(asText(genuine.ciphertext), [&](const std::string& changed, std::size_t) {
        auto envelope = genuine;
        envelope.ciphertext = toBytes(changed);
        expectHelloRefused(genuine, frameOf(std::move(envelope)));
    });
    tellRefused("bits of a session hello");
}

TEST_F(TamperedSession, NoTruncationOfASessionHelloIsAccepted) {
    logIn();
    takeEvents();
    const auto genuine = phone.newHello();
    withEveryTruncation(asText(genuine.ciphertext), [&](const std::string& shorter) {
        auto envelope = genuine;
        envelope.ciphertext = toBytes(shorter);
        expectHelloRefused(genuine, frameOf(std::move(envelope)));
    });
    withEveryTruncation(frameOf(genuine),
                        [&](const std::string& shorter) { expectHelloRefused(genuine, shorter); });
    tellRefused("truncations of a session hello and of its frame");
}

TEST_F(TamperedSession, OfAHellosFrameOnlyTheKindAndTheSignedHelloCount) {
    logIn();
    takeEvents();
    const auto genuine = phone.newHello();
    std::size_t accepted = 0;
    const auto count = withEveryBitChanged(frameOf(genuine), [&](const std::string& changed, std::size_t) {
        const auto read = decode<RelayMessage>(changed);
        const auto* forward = read ? read->as<RelayMessage::Forward>() : nullptr;
        const bool isSameHello = forward && forward->envelope.ciphertext == genuine.ciphertext &&
                                 forward->envelope.kind == genuine.kind;
        if (!isSameHello) return expectHelloRefused(genuine, changed);
        ++accepted;
        EXPECT_TRUE(std::ranges::any_of(arrive(changed), isSession)) << changed;
        // Makes this device draw a new key, which was not yet combined with the hello's key.
        relay(RelayMessage::PeerOnline{true});
        takeEvents();
    });
    EXPECT_GT(accepted, 0U);
    tell("bits of a hello's frame", count,
         std::to_string(accepted) + " in fields that nothing depends on, the others refused");
}

TEST_F(TamperedSession, NoBitOfTheFramesOfThreeMessagesMayChange) {
    secure();
    for (const auto& payload : payloads) {
        for (std::size_t bit = 0;; ++bit) {
            auto genuine = phone.seal(payload);
            auto changed = frameOf(genuine);
            if (bit >= 8 * changed.size()) break;
            changed[bit / 8] =
                static_cast<char>(static_cast<unsigned char>(changed[bit / 8]) ^ 1U << bit % 8);
            expectRefused(payload, std::move(genuine), changed);
        }
    }
    EXPECT_TRUE(isSecured());
    tellRefused("bits of the frames of three messages");
}

TEST_F(TamperedSession, NoBitOfTheSealedBytesMayChange) {
    secure();
    for (const auto& payload : payloads)
        for (auto field : sealedFields) {
            const auto size = (phone.seal(payload).*field).size();
            for (std::size_t bit = 0; bit < 8 * size; ++bit) {
                auto genuine = phone.seal(payload);
                auto changed = genuine;
                (changed.*field)[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
                expectRefused(payload, std::move(genuine), frameOf(std::move(changed)));
            }
        }
    tellRefused("bits of the sealed bytes of three messages");
}

TEST_F(TamperedSession, NoTruncationOfThreeMessagesIsAccepted) {
    secure();
    for (const auto& payload : payloads) {
        for (std::size_t length = 0;; ++length) {
            auto genuine = phone.seal(payload);
            const auto frame = frameOf(genuine);
            if (length >= frame.size()) break;
            expectRefused(payload, std::move(genuine), frame.substr(0, length));
        }
        for (auto field : sealedFields) {
            const auto size = (phone.seal(payload).*field).size();
            for (std::size_t length = 0; length < size; ++length) {
                auto genuine = phone.seal(payload);
                auto shorter = genuine;
                (shorter.*field).resize(length);
                expectRefused(payload, std::move(genuine), frameOf(std::move(shorter)));
            }
        }
    }
    tellRefused("truncations of the frames and the sealed bytes of three messages");
}

TEST_F(TamperedSession, WithoutItsFirstMessagesADirectionGoesOnAndTheDeletedOnesAreLostForGood) {
    constexpr std::size_t messages = 8;
    for (std::size_t deleted = 1; deleted <= messages; ++deleted) {
        logIn();
        exchangeHellos();
        takeEvents();
        const auto before = sentEnvelopes().size();
        for (std::size_t i = 0; i < messages; ++i) EXPECT_TRUE(poslat(note(std::to_string(i))));
        auto sent = sentEnvelopes();
        sent.erase(sent.begin(), sent.begin() + static_cast<std::ptrdiff_t>(before));
        for (std::size_t i = deleted; i < messages; ++i)
            EXPECT_EQ(phone.open(sent[i]).value(), note(std::to_string(i)));
        for (std::size_t i = 0; i < deleted && deleted < messages; ++i) EXPECT_FALSE(phone.open(sent[i]));
        EXPECT_TRUE(isSecured());
        EXPECT_TRUE(executor.run(link->zastavit()));
    }
    tell("deletions after a handshake, from the computer", messages, "no late message accepted");
}

} // namespace
} // namespace morvex
