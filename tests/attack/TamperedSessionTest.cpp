#include "shared/wire/Json.h"
#include "tests/attack/Changes.h"
#include "tests/shared-apple/SecureLinkFixture.h"
#include "tests/support/Effort.h"

#include <algorithm>
#include <string>
#include <vector>

namespace morvex {
namespace {

/// A link on which everything arrives that a relay makes of a genuine envelope.
class TamperedSession : public test::SecureLinkFixture {
  protected:
    /// The events that the envelope causes, when it can be read at all. One that cannot breaks the
    /// connection.
    Udalosti arrive(const std::string& envelopeJSON) {
        auto read = decode<Envelope>(envelopeJSON);
        if (!read) return {};
        relay(*std::move(read));
        return takeEvents();
    }

    static bool isMessage(const Udalost& event) { return std::holds_alternative<SecureLink::Zprava>(event); }

    static bool isSession(const Udalost& event) {
        return std::holds_alternative<SecureLink::Pripraveno>(event);
    }

    void expectNoMessage(const std::string& changed) {
        EXPECT_TRUE(std::ranges::none_of(arrive(changed), isMessage)) << changed;
    }

    void expectNoSession(const std::string& changed) {
        EXPECT_TRUE(std::ranges::none_of(arrive(changed), isSession)) << changed;
    }

    /// Envelopes of three shapes, sealed one after the other.
    std::vector<std::pair<MacPayload, Envelope>> threeEnvelopes() {
        std::vector<std::pair<MacPayload, Envelope>> made;
        for (MacPayload payload :
             {MacPayload{MacPayload::ToolCall{"mac.files.write", R"({"path":"a.txt","content":"žluť"})"}},
              MacPayload{MacPayload::ApprovalDecision{"A3F45126-91AE-49CF-A231-8EA42E787339", true, {}}},
              MacPayload{MacPayload::ToolProgress{""}}})
            made.emplace_back(payload, phone.seal(payload));
        return made;
    }
};

TEST_F(TamperedSession, NoBitOfASessionHelloMayChange) {
    logIn();
    const auto genuine = phone.newHello();
    phone.meet(*identita, sentHellos().back());
    const auto count =
        withEveryBitChanged(asText(genuine.ciphertext), [&](const std::string& changed, std::size_t) {
            auto envelope = genuine;
            envelope.ciphertext = toBytes(changed);
            expectNoSession(encode(envelope));
        });
    relay(genuine);
    EXPECT_TRUE(isSecured());
    tell("bits of a session hello", count, "all refused, the genuine one accepted");
}

TEST_F(TamperedSession, NoTruncationOfASessionHelloIsAccepted) {
    logIn();
    const auto genuine = phone.newHello();
    phone.meet(*identita, sentHellos().back());
    const auto count = withEveryTruncation(asText(genuine.ciphertext), [&](const std::string& shorter) {
        auto envelope = genuine;
        envelope.ciphertext = toBytes(shorter);
        expectNoSession(encode(envelope));
    });
    relay(genuine);
    EXPECT_TRUE(isSecured());
    tell("truncations of a session hello", count, "all refused, the genuine one accepted");
}

TEST_F(TamperedSession, OfAHellosEnvelopeOnlyTheKindAndTheSignedHelloCount) {
    logIn();
    const auto genuine = phone.newHello();
    std::size_t accepted = 0;
    const auto count = withEveryBitChanged(encode(genuine), [&](const std::string& changed, std::size_t) {
        const auto read = decode<Envelope>(changed);
        const bool isSameHello = read && read->ciphertext == genuine.ciphertext && read->kind == genuine.kind;
        EXPECT_EQ(std::ranges::any_of(arrive(changed), isSession), isSameHello) << changed;
        if (!isSameHello) return;
        ++accepted;
        // A new key of this device, which the hello has not met yet.
        relay(RelayMessage::PeerOnline{true});
        takeEvents();
    });
    EXPECT_GT(accepted, 0U);
    phone.meet(*identita, sentHellos().back());
    relay(genuine);
    EXPECT_TRUE(isSecured());
    tell("bits of a hello's envelope", count,
         std::to_string(accepted) + " in fields that nothing depends on, the others refused");
}

TEST_F(TamperedSession, NoBitOfThreeEnvelopesMayChange) {
    secure();
    std::size_t count = 0;
    for (const auto& [payload, genuine] : threeEnvelopes()) {
        count += withEveryBitChanged(
            encode(genuine), [&](const std::string& changed, std::size_t) { expectNoMessage(changed); });
        relay(genuine);
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(payload)}));
    }
    EXPECT_TRUE(isSecured());
    tell("bits of three envelopes", count, "all refused, the genuine ones accepted");
}

TEST_F(TamperedSession, NoBitOfTheSealedBytesMayChange) {
    secure();
    std::size_t count = 0;
    for (const auto& [payload, genuine] : threeEnvelopes()) {
        for (auto field : {&Envelope::nonce, &Envelope::ciphertext, &Envelope::tag})
            count +=
                withEveryBitChanged(asText(genuine.*field), [&](const std::string& changed, std::size_t) {
                    auto envelope = genuine;
                    envelope.*field = toBytes(changed);
                    expectNoMessage(encode(envelope));
                });
        relay(genuine);
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(payload)}));
    }
    tell("bits of the sealed bytes of three envelopes", count, "all refused, the genuine ones accepted");
}

TEST_F(TamperedSession, NoTruncationOfThreeEnvelopesIsAccepted) {
    secure();
    std::size_t count = 0;
    for (const auto& [payload, genuine] : threeEnvelopes()) {
        count += withEveryTruncation(encode(genuine), [&](const std::string& shorter) {
            EXPECT_FALSE(decode<Envelope>(shorter)) << shorter;
        });
        for (auto field : {&Envelope::nonce, &Envelope::ciphertext, &Envelope::tag})
            count += withEveryTruncation(asText(genuine.*field), [&](const std::string& shorter) {
                auto envelope = genuine;
                envelope.*field = toBytes(shorter);
                expectNoMessage(encode(envelope));
            });
        relay(genuine);
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(payload)}));
    }
    tell("truncations of three envelopes", count, "all refused, the genuine ones accepted");
}

TEST_F(TamperedSession, WithoutItsFirstMessagesADirectionGoesOnAndTheDeletedOnesAreLostForGood) {
    constexpr std::size_t messages = 8;
    for (std::size_t deleted = 0; deleted <= messages; ++deleted) {
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
    tell("deletions after a handshake, from the computer", messages + 1, "no late message accepted");
}

} // namespace
} // namespace morvex
