#include "tests/support/PairingHarness.h"

#include <functional>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// A phone that goes away during its pairing.
using LeavingPhoneTest = PairingHarness;

TEST_F(LeavingPhoneTest, APhoneThatLeavesWhileItsNumberIsComparedIsToldUntilItIsBack) {
    start();
    beginPairing();
    const auto& left = companion->stav().phoneHasLeft;
    phone.deliver({RelayMessage::PeerOnline{true}});
    phone.deliver({RelayMessage::PeerOnline{false}});
    executor.runUntilIdle();
    EXPECT_FALSE(left.value()) << "nobody has introduced himself yet";
    sendHello(hello());
    EXPECT_FALSE(left.value());
    const auto compared = state();
    for (bool isOnline : {false, true, false}) {
        phone.deliver({RelayMessage::PeerOnline{isOnline}});
        executor.runUntilIdle();
        EXPECT_EQ(left.value(), !isOnline);
        EXPECT_EQ(state(), compared) << "its number may be confirmed all the same";
    }
    sendHello(hello());
    EXPECT_FALSE(left.value()) << "it speaks";
}

TEST_F(LeavingPhoneTest, APhoneThatIsGoneWhenTheLinkComesBackHasLeft) {
    start();
    auto first = beginPairing();
    sendHello(hello());
    auto second = sockets.layOut();
    first->breakWith("přerušeno");
    executor.runUntilIdle();
    clock.advance(1s);
    executor.runUntilIdle();
    phone.attach(second, *mac);
    phone.logIn(false);
    executor.runUntilIdle();
    EXPECT_TRUE(companion->stav().phoneHasLeft.value());
}

TEST_F(LeavingPhoneTest, ThatThePhoneHasLeftIsToldAfterAgreeingUntilItHasASession) {
    start();
    beginPairing();
    sendHello(hello());
    phone.deliver({RelayMessage::PeerOnline{false}});
    executor.runUntilIdle();
    auto socket = sockets.layOut();
    agree();
    const auto& left = companion->stav().phoneHasLeft;
    EXPECT_TRUE(left.value());
    phone.attach(socket, *mac);
    phone.logIn(false);
    executor.runUntilIdle();
    EXPECT_TRUE(left.value());
    phone.deliver({RelayMessage::PeerOnline{true}});
    executor.runUntilIdle();
    phone.exchangeHellos();
    executor.runUntilIdle();
    EXPECT_FALSE(left.value());
}

TEST_F(LeavingPhoneTest, AnEndOfTheComparisonEndsTheWordOfThePhonesLeaving) {
    start();
    const auto& left = companion->stav().phoneHasLeft;
    const std::function<void()> ends[] = {[this] { flow().odmitnoutCislo(); },
                                          [this] { flow().zrusitParovani(); },
                                          [this] { flow().zacitParovani(); },
                                          [this] {
                                              agree();
                                              flow().odvolat();
                                          }};
    for (const auto& end : ends) {
        beginPairing();
        sendHello(hello());
        phone.deliver({RelayMessage::PeerOnline{false}});
        executor.runUntilIdle();
        ASSERT_TRUE(left.value());
        end();
        EXPECT_FALSE(left.value()) << &end - ends;
        executor.runUntilIdle();
    }
}

} // namespace
} // namespace morvex
