#include "tests/app/ui/ShownCompanion.h"

#include <QQuickItem>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class PressGuardTest : public ShownCompanion {
  protected:
    /// Until what has changed is on the screen.
    void draw() {
        settle();
        bool isDrawn = false;
        auto connection =
            QObject::connect(window(), &QQuickWindow::frameSwapped, window(), [&] { isDrawn = true; });
        window()->update();
        EXPECT_TRUE(QTest::qWaitFor([&] { return isDrawn; }));
        QObject::disconnect(connection);
    }

    /// The middle of the button or field of this name; drawn first, since layouts move.
    QPoint placeOf(const std::string& name) {
        draw();
        draw();
        QPoint place;
        walk(window(), [&](QAccessibleInterface* node) {
            if (isControl(node) && node->text(QAccessible::Name).toStdString() == name)
                place = node->rect().center() - window()->position();
        });
        EXPECT_FALSE(place.isNull()) << name;
        EXPECT_TRUE(QRect(QPoint(0, 0), window()->size()).contains(place)) << name;
        return place;
    }

    void click(QPoint place) {
        QTest::mouseClick(window(), Qt::LeftButton, {}, place);
        settle();
    }

    /// As a person who reads before the next press.
    void pause() {
        draw();
        clock.advance(400ms);
    }

    /// What the button of this text was about when its last press began.
    std::string meantBy(const std::string& text) {
        for (auto* item : window()->findChildren<QQuickItem*>())
            if (item->inherits("QQuickAbstractButton") &&
                item->property("text").toString().toStdString() == text)
                return item->property("meant").toString().toStdString();
        return "no such button";
    }

    void openHigh() {
        openWithKeyboard();
        window()->resize(720, 3'000);
        draw();
    }

    struct TwoFolders {
        std::string second;
        QPoint firstRemoval; ///< where the button is that removes the first one
    };

    /// After a press of that button the row of the second folder is there.
    TwoFolders openWithTwoFolders() {
        start();
        openHigh();
        const auto first = allowFolder("a");
        auto second = allowFolder("b");
        return {std::move(second), placeOf("Odebrat: " + first)};
    }
};

TEST_F(PressGuardTest, TheSecondHalfOfADoubleClickIsNotForWhatTheFirstBrought) {
    startPaired();
    openHigh();
    const auto place = placeOf("Spárovat jiný telefon");
    showState({StavParovani::OverCislo{"482 915"}});
    pause();
    click(place);
    showState({StavParovani::Necinne{}});
    draw();
    clock.advance(399ms);
    click(place);
    click(place + QPoint(3, 2));
    EXPECT_TRUE(http.requests.empty()) << "a hand that rests is never quite still";
    clock.advance(1ms);
    click(place);
    EXPECT_EQ(http.requests.size(), 1U);
}

TEST_F(PressGuardTest, WhatComesByItselfUnderARestingPointerTakesNoPressForAMoment) {
    startPaired();
    openHigh();
    const auto place = placeOf("Spárovat jiný telefon");
    showState({StavParovani::OverCislo{"482 915"}});
    // A move to where the pointer is already would be none.
    QTest::mouseMove(window(), place + QPoint(0, 30));
    QTest::mouseMove(window(), place);
    pause();
    showState({StavParovani::Necinne{}});
    draw();
    clock.advance(399ms);
    click(place);
    EXPECT_TRUE(http.requests.empty());
    clock.advance(1ms);
    click(place);
    EXPECT_EQ(http.requests.size(), 1U);
}

TEST_F(PressGuardTest, WhatComesBackUnderARestingPointerTakesAPressAtOnce) {
    startPaired();
    openHigh();
    const auto place = placeOf("Spárovat jiný telefon");
    QTest::mouseMove(window(), place + QPoint(0, 30));
    QTest::mouseMove(window(), place);
    pause();
    showState({StavParovani::OverCislo{"482 915"}});
    draw();
    showState({StavParovani::Necinne{}});
    draw();
    click(place);
    EXPECT_EQ(http.requests.size(), 1U);
}

TEST_F(PressGuardTest, APointerThatMovesThereMeansIt) {
    startPaired();
    openHigh();
    const auto place = placeOf("Spárovat jiný telefon");
    const auto other = placeOf("Odpojit telefon");
    showState({StavParovani::OverCislo{"482 915"}});
    pause();
    click(other);
    showState({StavParovani::Necinne{}});
    click(place);
    EXPECT_EQ(http.requests.size(), 1U);
}

TEST_F(PressGuardTest, ARowThatMovesUpIsNotRemovedWithTheOneBefore) {
    const auto [second, place] = openWithTwoFolders();
    pause();
    click(place);
    click(place);
    EXPECT_EQ(features->files.slozky().povolene(), std::vector{second});
    pause();
    click(place);
    EXPECT_TRUE(features->files.slozky().povolene().empty());
}

TEST_F(PressGuardTest, AFingerIsHeldBackAsAPointerIs) {
    const auto [second, place] = openWithTwoFolders();
    auto* device = QTest::createTouchDevice();
    const auto touch = [&] {
        QTest::touchEvent(window(), device).press(0, place, window());
        QTest::touchEvent(window(), device).release(0, place, window());
        settle();
    };
    pause();
    touch();
    ASSERT_EQ(features->files.slozky().povolene(), std::vector{second});
    draw();
    touch();
    EXPECT_EQ(features->files.slozky().povolene(), std::vector{second});
    pause();
    touch();
    EXPECT_TRUE(features->files.slozky().povolene().empty());
}

TEST_F(PressGuardTest, TheNextQuestionUnderTheSameButtonIsNotAnsweredWithTheLastOne) {
    start();
    openHigh();
    ask("Odeslat e-mail", "Komu: Jana");
    const auto place = placeOf("Potvrdit");
    pause();
    click(place);
    ask("Smazat vše", "Komu: Jana");
    click(place);
    EXPECT_EQ(answers, std::vector{true});
    pause();
    click(place);
    EXPECT_EQ(answers, (std::vector{true, true}));
}

TEST_F(PressGuardTest, AQuestionThatTheFirstOfTwoQuickKeysBroughtStays) {
    startPaired();
    openHigh();
    for (auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        goTo("Odpojit telefon");
        give(key);
        ASSERT_EQ(focused(), "Zrušit") << key;
        clock.advance(399ms);
        give(key);
        EXPECT_EQ(focused(), "Zrušit") << key;
        clock.advance(1ms);
        give(key);
        EXPECT_EQ(focused(), "Odpojit telefon") << key;
        clock.advance(400ms);
    }
}

TEST_F(PressGuardTest, ANumberThatComesUnderTheKeyboardTakesNoKeyForAMoment) {
    start();
    openHigh();
    showState({StavParovani::OverCislo{"482 915"}});
    goTo("Souhlasí");
    pause();
    showState({StavParovani::OverCislo{"111 111"}});
    draw();
    clock.advance(399ms);
    give(Qt::Key_Return);
    EXPECT_EQ(meantBy("Souhlasí"), "");
    clock.advance(1ms);
    give(Qt::Key_Return);
    EXPECT_EQ(meantBy("Souhlasí"), "111 111");
}

TEST_F(PressGuardTest, AKeyThatIsHeldPressesNothingThatItBrought) {
    startPaired();
    openHigh();
    goTo("Odpojit telefon");
    give(Qt::Key_Return);
    clock.advance(1s);
    for (int repeat = 0; repeat < 3; ++repeat) {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, QStringLiteral("\r"), true);
        QCoreApplication::sendEvent(window(), &held);
        settle();
        EXPECT_EQ(focused(), "Zrušit");
        clock.advance(100ms);
    }
}

TEST_F(PressGuardTest, BlanksAreTypedAsFastAsOneLikes) {
    start();
    openHigh();
    goTo("Relay");
    for (int blank = 0; blank < 3; ++blank) give(Qt::Key_Space);
    QTest::keyClick(window(), Qt::Key_Space);
    EXPECT_TRUE(window()->activeFocusItem()->property("text").toString().contains(QStringLiteral("    ")));
}

TEST_F(PressGuardTest, ANumberThatComesDuringAPressIsNotConfirmed) {
    start();
    openHigh();
    showState({StavParovani::OverCislo{"482 915"}});
    const auto place = placeOf("Souhlasí");
    pause();
    QTest::mousePress(window(), Qt::LeftButton, {}, place);
    showState({StavParovani::OverCislo{"111 111"}});
    draw();
    QTest::mouseRelease(window(), Qt::LeftButton, {}, place);
    settle();
    EXPECT_EQ(meantBy("Souhlasí"), "482 915");
}

} // namespace
} // namespace morvex
