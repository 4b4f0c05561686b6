#include "tests/support/UiHarness.h"

namespace morvex {
namespace {

class ApprovalTest : public UiHarness {
  protected:
    void ask(const std::string& title) {
        executor.start(
            note(companion->schvalovani().pozadat("mac.mail.send", title, "Nahlas.", "Komu: Jana")));
        settle();
    }

    void openMenu() {
        clock.advance(std::chrono::seconds(1)); // two presses at once would count as one
        ui->toggleMenu({});
        settle();
        ASSERT_NE(menu(), nullptr);
    }

    /// Where the button of this name is on the screen.
    static QRect place(const std::string& name, QQuickWindow* in) {
        QRect found;
        walk(in, [&](QAccessibleInterface* node) {
            if (node->role() == QAccessible::Button && node->text(QAccessible::Name).toStdString() == name)
                found = node->rect();
        });
        EXPECT_FALSE(found.isEmpty()) << name;
        return found;
    }
};

TEST_F(ApprovalTest, ARequestIsShownWithItsDetailAndEndsWithAPress) {
    start();
    openUi();
    EXPECT_FALSE(mentions("Čeká na potvrzení"));
    for (bool approved : {true, false}) {
        ask("Odeslat e-mail");
        EXPECT_TRUE(reads("Čeká na potvrzení: Odeslat e-mail"));
        EXPECT_TRUE(reads("Komu: Jana"));
        EXPECT_TRUE(reads("Potvrdit můžeš tady i hlasem na telefonu. Bez potvrzení se neprovede nic — ani po "
                          "vypršení."));
        press(approved ? "Potvrdit" : "Zamítnout");
        EXPECT_FALSE(mentions("Čeká na potvrzení"));
        EXPECT_EQ(answers.back(), approved);
    }
}

TEST_F(ApprovalTest, TheWindowOfTheTrayAsksTooAndTakesBothAnswers) {
    startSecured();
    tray.come();
    startUi();
    for (bool approved : {true, false}) {
        ask("Odeslat e-mail");
        openMenu();
        EXPECT_THAT(names(QAccessible::StaticText, menu()),
                    testing::Contains("Čeká na potvrzení: Odeslat e-mail"));
        press(approved ? "Potvrdit" : "Zamítnout", menu());
        EXPECT_EQ(answers.back(), approved);
        EXPECT_FALSE(mentions("Čeká na potvrzení", menu()));
        EXPECT_THAT(names(QAccessible::Button, menu()), testing::Not(testing::Contains("Potvrdit")));
        menu()->close();
        settle();
    }
}

TEST_F(ApprovalTest, TheYesComesFirstInTheTrayAndLastInTheWindow) {
    startSecured();
    tray.come();
    startUi();
    ask("Odeslat e-mail");
    openMenu();
    EXPECT_LT(place("Potvrdit", menu()).left(), place("Zamítnout", menu()).left());
    EXPECT_LT(place("Zamítnout", window()).left(), place("Potvrdit", window()).left());
}

TEST_F(ApprovalTest, AClosedWindowOpensByItselfWithoutTakingTheKeyboard) {
    start();
    openUi();
    window()->close();
    settle();
    ASSERT_EQ(window(), nullptr);
    ask("Odeslat e-mail");
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(window()->isVisible());
    EXPECT_TRUE(window()->property("_q_showWithoutActivating").toBool());
}

TEST_F(ApprovalTest, TheDesktopShowsItWithBothAnswersButWithoutTheDetail) {
    start();
    openUi();
    ask("Odeslat e-mail");
    ASSERT_TRUE(notifications.shown);
    EXPECT_EQ(notifications.shown->title, "Čeká na potvrzení: Odeslat e-mail");
    EXPECT_EQ(notifications.shown->body, "");
    ASSERT_EQ(notifications.shown->actions.size(), 3U);
    EXPECT_EQ(notifications.shown->actions[1].label, "Potvrdit");
    EXPECT_EQ(notifications.shown->actions[2].label, "Zamítnout");
    notifications.shown->onAction("refuse");
    settle();
    EXPECT_EQ(answers, std::vector{false});
    EXPECT_FALSE(notifications.shown) << "it goes with the request";
}

TEST_F(ApprovalTest, TheDesktopsAnswersDecide) {
    start();
    openUi();
    for (std::size_t position : {1U, 2U}) {
        ask("Odeslat e-mail");
        const auto shown = *notifications.shown;
        shown.onAction(shown.actions.at(position).key);
        settle();
        EXPECT_EQ(answers.back(), shown.actions[position].label == "Potvrdit");
    }
    EXPECT_EQ(answers, (std::vector{true, false}));
}

TEST_F(ApprovalTest, APressOfTheNotificationItselfOpensTheWindowAndDecidesNothing) {
    start();
    openUi();
    ask("Odeslat e-mail");
    window()->close();
    settle();
    EXPECT_EQ(notifications.shown->actions[0].key, "default") << "the desktops' name of such a press";
    notifications.shown->onAction("default");
    settle();
    ASSERT_NE(window(), nullptr);
    EXPECT_FALSE(window()->property("_q_showWithoutActivating").toBool()) << "it takes the keyboard";
    EXPECT_TRUE(reads("Čeká na potvrzení: Odeslat e-mail"));
    EXPECT_TRUE(answers.empty());
}

TEST_F(ApprovalTest, AButtonOfAnEarlierNotificationDoesNotDecideALaterRequest) {
    start();
    openUi();
    ask("První");
    auto earlier = *notifications.shown;
    press("Zamítnout");
    ask("Druhá");
    earlier.onAction("approve");
    settle();
    EXPECT_EQ(answers, std::vector{false});
    EXPECT_TRUE(reads("Čeká na potvrzení: Druhá"));
}

TEST_F(ApprovalTest, ExpiryTakesTheQuestionAway) {
    start();
    openUi();
    ask("Odeslat e-mail");
    clock.advance(std::chrono::seconds(120));
    settle();
    EXPECT_FALSE(mentions("Čeká na potvrzení"));
    EXPECT_EQ(answers, std::vector{false});
    EXPECT_FALSE(notifications.shown);
}

} // namespace
} // namespace morvex
