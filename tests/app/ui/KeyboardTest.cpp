#include "tests/app/ui/ShownCompanion.h"

#include <QTest>

#include <algorithm>
#include <set>

namespace morvex {
namespace {

class KeyboardTest : public ShownCompanion {
  protected:
    void give(Qt::Key key) {
        QTest::keyClick(window(), key);
        settle();
    }

    std::string focused() {
        auto* node = QAccessible::queryAccessibleInterface(window()->focusObject());
        return node ? node->text(QAccessible::Name).toStdString() : std::string();
    }

    /// What Tab reaches before it comes back to where it began.
    std::vector<std::string> reachedByTab() {
        std::vector<std::string> reached;
        give(Qt::Key_Tab);
        auto* first = window()->focusObject();
        do {
            reached.push_back(focused());
            give(Qt::Key_Tab);
        } while (window()->focusObject() != first && reached.size() < 200);
        return reached;
    }

    void goTo(const std::string& name) {
        for (int step = 0; step < 200 && focused() != name; ++step) give(Qt::Key_Tab);
        ASSERT_EQ(focused(), name);
    }

    void openWithKeyboard() {
        openUi();
        window()->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
    }
};

TEST_F(KeyboardTest, TabReachesEveryControlOnceInTheOrderOfTheCards) {
    startSecured();
    openWithKeyboard();
    fill();
    ask();
    auto reached = reachedByTab();
    auto controls = usableControls();
    EXPECT_EQ(std::multiset<std::string>(reached.begin(), reached.end()),
              std::multiset<std::string>(controls.begin(), controls.end()));
    EXPECT_EQ(reached.front(), "Spárovat jiný telefon");
    auto place = [&](const char* name) { return std::ranges::find(reached, name) - reached.begin(); };
    EXPECT_LT(place("Odpojit telefon"), place("Zamítnout"));
    EXPECT_LT(place("Potvrdit"), place("Poznámky Morvex"));
    EXPECT_LT(place("Přidat nebo obnovit složku"), place("Spouštět po přihlášení"));
}

TEST_F(KeyboardTest, EveryControlHasAName) {
    startSecured();
    openWithKeyboard();
    fill();
    ask();
    auto all = usableControls();
    EXPECT_GT(all.size(), 20U);
    for (const auto& name : all) EXPECT_FALSE(name.empty());
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), all.size()) << "no two sound alike";
}

TEST_F(KeyboardTest, SpaceAndEnterPressButtonsAndSwitches) {
    start();
    openWithKeyboard();
    for (auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        goTo("Spouštět po přihlášení");
        auto before = loginItem.enabled;
        give(key);
        EXPECT_NE(loginItem.enabled, before) << key;
        goTo("Zobrazit QR kód");
        auto asked = http.requests.size();
        give(key);
        EXPECT_EQ(http.requests.size(), asked + 1) << key;
        companion->parovani().zrusitParovani();
        settle();
    }
}

TEST_F(KeyboardTest, WhatHasTheKeyboardIsScrolledIntoSight) {
    startSecured();
    openWithKeyboard();
    goTo("Při napájení udržovat Morvex dostupný");
    auto* node = QAccessible::queryAccessibleInterface(window()->focusObject());
    auto place = node->rect().translated(-window()->position());
    EXPECT_TRUE(QRect(QPoint(0, 0), window()->size()).contains(place));
}

TEST_F(KeyboardTest, EscapeClosesASheetAndTheTrayWindow) {
    startSecured();
    openWithKeyboard();
    fill();
    press("Vymazat: Poslední úkoly");
    ASSERT_NE(texts().find("Vymazat historii úkolů?"), std::string::npos);
    give(Qt::Key_Escape);
    EXPECT_EQ(texts().find("Vymazat historii úkolů?"), std::string::npos);
    ui->toggleMenu({});
    settle();
    ASSERT_NE(menu(), nullptr);
    QTest::keyClick(menu(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(menu(), nullptr);
}

} // namespace
} // namespace morvex
