#include "tests/app/ui/ShownCompanion.h"

#include <QQuickItem>

namespace morvex {
namespace {

class KeyboardTest : public ShownCompanion {
  protected:
    void typeKeys(const std::string& text) {
        for (char character : text) QTest::keyClick(window(), character);
    }

    /// Whether all of what has the keyboard is in sight.
    bool isInSight() {
        auto* node = QAccessible::queryAccessibleInterface(window()->focusObject());
        auto place = node->rect().translated(-window()->position());
        return QRect(QPoint(0, 0), window()->size()).contains(place);
    }

    /// How far the cards are scrolled.
    double scrolled() { return ofCards("contentY"); }

    double ofCards(const char* property) {
        return window()->contentItem()->childItems().front()->property(property).toDouble();
    }

    /// Shows a long trouble in the topmost card, or takes it away, and waits until the cards have moved.
    void showLongTrouble(bool isThere) {
        const auto before = ofCards("contentHeight");
        companion->stav().potiz = isThere ? std::optional(Sentence(std::string(4'000, 'a'))) : std::nullopt;
        EXPECT_TRUE(QTest::qWaitFor([&] { return ofCards("contentHeight") != before; }));
        settle();
    }
};

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

TEST_F(KeyboardTest, TheListOfLanguagesIsUsedWithArrowsEnterAndEscape) {
    start();
    openWithKeyboard();
    const std::string picker = "Jazyk aplikace a asistentky";
    for (auto key : {Qt::Key_Space, Qt::Key_Return}) {
        goTo(picker);
        give(key);
        give(Qt::Key_Down);
        give(Qt::Key_Escape);
        EXPECT_EQ(features->voice.controller().languageMode(), "phone") << "Escape leaves it as it was";
    }
    give(Qt::Key_Space);
    give(Qt::Key_Down);
    give(Qt::Key_Return);
    EXPECT_EQ(features->voice.controller().languageMode(), "cs");
    EXPECT_EQ(focused(), picker);
}

TEST_F(KeyboardTest, WhatHasTheKeyboardIsScrolledIntoSight) {
    startSecured();
    openWithKeyboard();
    fill();
    settle();
    const auto controls = usableControls().size();
    for (auto key : {Qt::Key_Tab, Qt::Key_Backtab})
        for (std::size_t step = 0; step < controls; ++step) {
            give(key);
            EXPECT_TRUE(isInSight()) << focused();
        }
}

TEST_F(KeyboardTest, WhatGrowsAboveItDoesNotPushItOutOfSightUnlessThePersonScrolledAway) {
    start();
    openWithKeyboard();
    for (const auto* name : {"Soubory", "Terminál", "Zjistit znovu: Codex"}) {
        goTo(name);
        ASSERT_TRUE(isInSight()) << name;
        showLongTrouble(true);
        EXPECT_TRUE(isInSight()) << name;
        showLongTrouble(false);
    }
    give(Qt::Key_Home);
    ASSERT_FALSE(isInSight());
    showLongTrouble(true);
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(KeyboardTest, KeysScrollTheCardsAndALongNote) {
    startSecured();
    openWithKeyboard();
    EXPECT_EQ(scrolled(), 0);
    give(Qt::Key_Down);
    auto little = scrolled();
    EXPECT_GT(little, 0);
    give(Qt::Key_PageDown);
    EXPECT_GT(scrolled(), little + 100);
    give(Qt::Key_End);
    auto end = scrolled();
    give(Qt::Key_Down);
    EXPECT_EQ(scrolled(), end) << "not beyond the end";
    give(Qt::Key_Home);
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(KeyboardTest, EscapeClosesEverySheetAndTheTrayWindow) {
    startSecured();
    openWithKeyboard();
    fill();
    settle();
    for (const auto& [button, sheet] : {std::pair{"Vymazat: Poslední úkoly", "Vymazat historii úkolů?"},
                                        {"Nákup", "Zavřít"},
                                        {"Spravovat: Vlastní aplikace", "Přidat aplikaci"}}) {
        goTo(button);
        give(Qt::Key_Space);
        EXPECT_TRUE(reads(sheet));
        give(Qt::Key_Escape);
        EXPECT_FALSE(mentions(sheet));
        EXPECT_EQ(focused(), button) << "the keyboard is back where it was";
    }
    EXPECT_EQ(features->agents.historie().polozky().size(), 3U);
    ui->toggleMenu({});
    settle();
    ASSERT_NE(menu(), nullptr);
    give(Qt::Key_Escape, menu());
    EXPECT_EQ(menu(), nullptr);
}

TEST_F(KeyboardTest, ANewAppIsTypedAndKeptWithoutAMouse) {
    startSecured();
    openWithKeyboard();
    goTo("Spravovat: Vlastní aplikace");
    give(Qt::Key_Space);
    goTo("Přidat aplikaci");
    give(Qt::Key_Return);
    EXPECT_EQ(focused(), "Název");
    typeKeys("Sklad");
    goTo("Adresa");
    typeKeys("https://sklad.example/api/mcp");
    give(Qt::Key_Return);
    ASSERT_EQ(features->customApps.service().apps().size(), 1U);
    EXPECT_EQ(features->customApps.service().apps()[0].name, "Sklad");
    goTo("Odebrat: Sklad");
    give(Qt::Key_Space);
    clock.advance(std::chrono::seconds(1));
    give(Qt::Key_Return);
    EXPECT_EQ(features->customApps.service().apps().size(), 1U) << "Enter at the question leaves it";
    clock.advance(std::chrono::seconds(1));
    goTo("Odebrat: Sklad");
    give(Qt::Key_Space);
    goTo("Odebrat");
    give(Qt::Key_Space);
    EXPECT_TRUE(features->customApps.service().apps().empty());
    goTo("Hotovo");
    give(Qt::Key_Space);
    EXPECT_EQ(focused(), "Spravovat: Vlastní aplikace");
}

TEST_F(KeyboardTest, StaysInTheCardWhoseControlGoesAway) {
    start();
    openWithKeyboard();
    for (const char* name : {"jedna", "dvě", "tři"}) allowFolder(name);
    settle();
    const auto row = [this](const char* name) { return "Odebrat: " + (temporary.path() / name).string(); };
    goTo(row("dvě"));
    give(Qt::Key_Space);
    give(Qt::Key_Space);
    EXPECT_EQ(features->files.slozky().povolene().size(), 2U) << "the second press meets no button";
    give(Qt::Key_Tab);
    EXPECT_EQ(focused(), row("jedna"));
    goTo("Zobrazit QR kód");
    give(Qt::Key_Space);
    const auto asked = http.requests.size();
    give(Qt::Key_Space);
    EXPECT_EQ(http.requests.size(), asked);
    showState({StavParovani::OverCislo{"482 915"}});
    give(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Souhlasí");
}

TEST_F(KeyboardTest, StaysOnARowWhenOtherRowsChange) {
    startSecured();
    openWithKeyboard();
    fill();
    settle();
    const std::string running = "Zastavit: Přidej na web tmavý režim";
    goTo(running);
    auto& history = features->agents.historie();
    history.dokonci(history.zaloz({{}, {}, "codex", "Další", "Další", temporary.path().string()}).workItemID,
                    "Hotovo.", "relace-2");
    settle();
    EXPECT_TRUE(reads("Pokračovat v Codexu: Další"));
    EXPECT_EQ(focused(), running);
    goTo("Nákup");
    (void)ended(features->records.poznamky().vytvorit("Nová", "Text"));
    settle();
    EXPECT_EQ(focused(), "Nákup");
}

TEST_F(KeyboardTest, AKeyPressedOnceMoreDoesNotDecideTheNextRequest) {
    start();
    openWithKeyboard();
    ask();
    goTo("Potvrdit");
    give(Qt::Key_Space);
    ASSERT_EQ(answers, std::vector{true});
    ask();
    give(Qt::Key_Space);
    EXPECT_EQ(answers.size(), 1U);
    give(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Zamítnout") << "the keyboard is still at this card";
}

} // namespace
} // namespace morvex
