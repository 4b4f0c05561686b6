#include "tests/support/CompanionHarness.h"

#include <utility>

namespace morvex {
namespace {

/// When those who watch the companion are told, and of what first.
using CompanionStateTest = CompanionHarness;

TEST_F(CompanionStateTest, AnEqualWriteNotifiesNobody) {
    startSecured();
    int notified = 0;
    auto notifier = companion->stav().dostupnost.addNotifier([&notified] { ++notified; });
    phone.exchangeHellos();
    executor.runUntilIdle();
    EXPECT_EQ(notified, 0);
}

TEST_F(CompanionStateTest, TheSameTroubleTwiceIsToldOnce) {
    startSecured();
    int notified = 0;
    auto notifier = companion->stav().potiz.addNotifier([&notified] { ++notified; });
    for (int i = 0; i < 2; ++i)
        phone.deliver({RelayMessage::Failure{RelayFailure::rateLimited, "Pomaleji."}});
    executor.runUntilIdle();
    EXPECT_EQ(trouble(), "Pomaleji.");
    EXPECT_EQ(notified, 1);
}

TEST_F(CompanionStateTest, AnEqualAddressOfTheRelayNotifiesNobody) {
    start();
    int notified = 0;
    auto notifier = companion->stav().relayAdresa.addNotifier([&notified] { ++notified; });
    companion->setRelayAdresa("http://127.0.0.1:8787");
    EXPECT_EQ(notified, 0);
    companion->setRelayAdresa("https://relay.example");
    EXPECT_EQ(notified, 1);
}

TEST(CompanionState, EachFieldNotifiesOfAChangeAndOfNoEqualWrite) {
    CompanionState state;
    const auto watch = [](auto& field, auto first, auto second) {
        field = first;
        int notified = 0;
        auto notifier = field.addNotifier([&notified] { ++notified; });
        field = first;
        EXPECT_EQ(notified, 0);
        field = second;
        EXPECT_EQ(notified, 1);
        field = second;
        EXPECT_EQ(notified, 1);
    };
    const std::optional<Sentence> trouble{Sentence("potíž")};
    PairedPeer peer;
    peer.pairID = {"PAIR"};
    watch(state.dostupnost, MacAvailability{MacAvailability::Pripojuji{1, 0}},
          MacAvailability{MacAvailability::Pripojuji{2, 1}});
    watch(state.parovani, StavParovani{StavParovani::OverCislo{"123 456"}},
          StavParovani{StavParovani::OverCislo{"123 457"}});
    watch(state.protejsek, std::optional<PairedPeer>{PairedPeer{}}, std::optional{peer});
    watch(state.potiz, std::optional<Sentence>{}, trouble);
    watch(state.settingsTrouble, std::optional<Sentence>{}, trouble);
    watch(state.relayAdresa, std::string{"http://a"}, std::string{"http://b"});
}

/// Which fields are written in which order while one event is handled.
class OrderOfWritesTest : public CompanionHarness {
  protected:
    void watchWrites() {
        auto& state = companion->stav();
        watch(state.dostupnost, "dostupnost");
        watch(state.potiz, "potiz");
        watch(state.protejsek, "protejsek");
        watch(companion->schvalovani().zadost(), "zadost");
    }

    std::vector<std::string> takeWrites() {
        executor.runUntilIdle();
        return std::exchange(writes_, {});
    }

    void ask() {
        executor.start([](Schvalovani* approvals) -> Task<void> {
            (void)co_await approvals->pozadat("mac.mail.send", "Odeslat", "Odeslat?", "x");
        }(&companion->schvalovani()));
        executor.runUntilIdle();
    }

  private:
    template <class Property> void watch(Property& property, std::string name) {
        notifiers_.emplace_back(property.addNotifier([this, name] { writes_.push_back(name); }));
    }

    std::vector<QPropertyNotifier> notifiers_;
    std::vector<std::string> writes_;
};

TEST_F(OrderOfWritesTest, ALossIsTheAvailabilityThenTheTroubleThenTheRefusal) {
    auto socket = startSecured();
    ask();
    watchWrites();
    socket->breakWith("síť spadla");
    EXPECT_EQ(takeWrites(), (std::vector<std::string>{"dostupnost", "potiz", "zadost", "dostupnost"}));
    EXPECT_EQ(availability(), "Připojuji… (2. pokus)");
}

TEST_F(OrderOfWritesTest, ARevocationIsTheAvailabilityThenTheRefusalThenThePeer) {
    startSecured();
    ask();
    watchWrites();
    phone.deliver({RelayMessage::Failure{RelayFailure::revoked, "Pryč."}});
    EXPECT_EQ(takeWrites(), (std::vector<std::string>{"dostupnost", "zadost", "protejsek"}));
}

TEST_F(OrderOfWritesTest, AnUnusablePairingIsTheAvailabilityThenTheTrouble) {
    startSecured();
    companion->stav().protejsek = phone.asPeer("nesmysl");
    watchWrites();
    companion->pripojit();
    EXPECT_EQ(takeWrites(), (std::vector<std::string>{"dostupnost", "potiz"}));
}

TEST_F(OrderOfWritesTest, ReadyIsTheAvailabilityThenNoTroubleThenTheStatus) {
    startPaired();
    phone.logIn();
    executor.runUntilIdle();
    ASSERT_NE(trouble(), "none");
    watchWrites();
    bool isClearedFirst = false;
    auto cleared = companion->stav().potiz.addNotifier([this, &isClearedFirst] {
        if (trouble() == "none") isClearedFirst = phone.take().empty();
    });
    phone.exchangeHellos();
    EXPECT_EQ(takeWrites(), (std::vector<std::string>{"dostupnost", "potiz"}));
    EXPECT_TRUE(isClearedFirst) << "the status has left while the trouble stood";
    EXPECT_EQ(takeStatuses().size(), 1U);
}

} // namespace
} // namespace morvex
