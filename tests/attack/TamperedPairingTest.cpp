#include "tests/attack/Changes.h"
#include "tests/support/Effort.h"
#include "tests/support/PairingHarness.h"

#include <string>

namespace morvex {
namespace {

std::string changedPlace(std::size_t place) {
    return "byte " + std::to_string(place);
}

/// The computer waits for the phone and receives every change that the relay makes to the phone's hello.
class TamperedPairing : public PairingHarness {
  protected:
    TamperedPairing() {
        start();
        beginPairing();
    }

    void expectRefused(const std::string& changed, const std::string& what) {
        sendBytes(toBytes(changed));
        EXPECT_TRUE(state().as<StavParovani::Chyba>()) << what;
        EXPECT_FALSE(store.held.nactiProtejsek().value()) << what;
    }

    /// Used between the changed ones, to check that none is refused only because the computer stopped
    /// reading.
    void expectTheGenuineOneShown(const std::string& genuine) {
        sendBytes(toBytes(genuine));
        ASSERT_TRUE(state().as<StavParovani::OverCislo>());
        EXPECT_EQ(state().as<StavParovani::OverCislo>()->cislo, number());
    }

    void expectTheGenuineOneAccepted(const std::string& genuine) {
        sendBytes(toBytes(genuine));
        const auto* compare = state().as<StavParovani::OverCislo>();
        ASSERT_TRUE(compare);
        EXPECT_EQ(compare->cislo, number());
        flow().potvrditCislo(compare->cislo);
        executor.runUntilIdle();
        EXPECT_EQ(store.held.nactiProtejsek().value()->deviceID, phone.identity.deviceID());
    }
};

TEST_F(TamperedPairing, NoBitOfTheHelloMayChange) {
    const auto genuine = encode(hello());
    const auto count = withEveryBitChanged(genuine, [&](const std::string& changed, std::size_t place) {
        expectRefused(changed, changedPlace(place));
        expectTheGenuineOneShown(genuine);
    });
    expectTheGenuineOneAccepted(genuine);
    tell("bits of a pairing hello", count, "all refused, the genuine one accepted");
}

TEST_F(TamperedPairing, NoTruncationOfTheHelloIsAccepted) {
    const auto genuine = encode(hello());
    const auto count = withEveryTruncation(genuine, [&](const std::string& shorter) {
        expectRefused(shorter, shorter);
        expectTheGenuineOneShown(genuine);
    });
    expectTheGenuineOneAccepted(genuine);
    tell("truncations of a pairing hello", count, "all refused, the genuine one accepted");
}

TEST_F(TamperedPairing, ARefusedHelloTakesTheNumberFromTheScreenSoThatNothingCanBeConfirmed) {
    sendHello(hello());
    ASSERT_TRUE(state().as<StavParovani::OverCislo>());
    auto forged = hello();
    forged.signature[0] ^= 1;
    sendHello(forged);
    flow().potvrditCislo(number());
    executor.runUntilIdle();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    expectTheGenuineOneAccepted(encode(hello()));
}

} // namespace
} // namespace morvex
