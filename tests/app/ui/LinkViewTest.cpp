#include "tests/support/UiHarness.h"

#include <QSignalSpy>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// The card "Spojení".
class LinkViewTest : public UiHarness {
  protected:
    void pass(Clock::Duration time) {
        clock.advance(time);
        settle();
    }

    void loseLink() {
        startSecured()->breakWith("Relay neodpověděl.");
        openUi();
        for (auto wait : {1s, 2s, 5s, 10s}) pass(wait);
    }
};

TEST_F(LinkViewTest, SaysWhenTheLinkTriesNextAndCountsTheSeconds) {
    loseLink();
    for (int left = 20; left > 0; --left) {
        EXPECT_TRUE(reads("Další pokus za " + std::to_string(left) + " s")) << texts();
        pass(1s);
    }
    EXPECT_TRUE(reads("Další pokus za 30 s")) << "the attempt of that moment has failed";
}

TEST_F(LinkViewTest, ASecondOfTheCountdownTellsOfNoOtherField) {
    loseLink();
    pass(1s);
    auto* link = ui->model().link();
    QSignalSpy countdown(link, &LinkModel::nextAttemptChanged);
    QSignalSpy availability(link, &LinkModel::availabilityChanged);
    QSignalSpy trouble(link, &LinkModel::troubleChanged);
    for (int seconds = 1; seconds <= 3; ++seconds) {
        pass(1s);
        EXPECT_EQ(countdown.size(), seconds);
    }
    EXPECT_TRUE(availability.empty());
    EXPECT_TRUE(trouble.empty());
}

TEST_F(LinkViewTest, TriesAtOnceOnAPressAndOffersNothingOnceItIsThere) {
    loseLink();
    auto socket = sockets.layOut();
    const auto attempts = sockets.urls.size();
    press("Zkusit hned");
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
    phone.attach(socket, *mac);
    phone.logIn();
    settle();
    EXPECT_FALSE(mentions("Další pokus"));
    EXPECT_FALSE(mentions("Zkusit hned"));
}

TEST_F(LinkViewTest, WhileAnAttemptIsMadeNoneIsAnnounced) {
    loseLink();
    (void)sockets.layOut();
    pass(20s);
    EXPECT_EQ(availability(), "Připojuji… (6. pokus)");
    EXPECT_FALSE(mentions("Další pokus"));
}

TEST_F(LinkViewTest, AnUnpairingThatIsNotSavedIsToldBesideAnotherTrouble) {
    start();
    openUi();
    const std::string unsaved = "Odpojení telefonu se nepodařilo uložit: Na disku není místo.";
    companion->stav().vaultTrouble = Sentence(unsaved);
    settle();
    EXPECT_TRUE(reads(unsaved)) << texts();
    companion->stav().potiz = Sentence("Relay neodpověděl.");
    settle();
    EXPECT_TRUE(reads(unsaved)) << texts();
    EXPECT_TRUE(reads("Relay neodpověděl.")) << texts();
}

TEST_F(LinkViewTest, SaysInOneLineThatTheKeysLieInFiles) {
    const std::string told =
        "Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka.";
    start();
    openUi();
    EXPECT_FALSE(mentions(told));
    companion->stav().areKeysInFiles = true;
    settle();
    EXPECT_TRUE(reads(told));
}

} // namespace
} // namespace morvex
