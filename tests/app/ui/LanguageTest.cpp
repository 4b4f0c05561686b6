#include "tests/support/UiHarness.h"

namespace morvex {
namespace {

class LanguageTest : public UiHarness {
  protected:
    /// What a screen reader tells of the choice of the language.
    std::string chosenValue() {
        std::string told;
        walk(window(), [&told](QAccessibleInterface* node) {
            if (node->role() == QAccessible::ComboBox)
                told = node->text(QAccessible::Description).toStdString();
        });
        return told;
    }
};

TEST_F(LanguageTest, AnOpenWindowChangesItsLanguageWithThePhone) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Povolené složky"));
    EXPECT_TRUE(reads("Telefon: Připraven"));
    phone.send({MacPayload::Preferences{{"en", "sage", {}}}}, "p");
    settle();
    EXPECT_TRUE(reads("Allowed folders"));
    EXPECT_TRUE(reads("Phone: Ready"));
    EXPECT_FALSE(mentions("Povolené složky"));
}

TEST_F(LanguageTest, TheWindowHasEveryLanguageToChooseFrom) {
    start();
    openUi();
    EXPECT_EQ(names(QAccessible::ComboBox), std::vector<std::string>{"Jazyk aplikace a asistentky"});
    EXPECT_EQ(ui->model().voice()->languageIndex(), 0);
    EXPECT_EQ(chosenValue(), "Podle iPhonu");
    ui->model().voice()->setLanguageMode(QStringLiteral("en"));
    settle();
    EXPECT_EQ(features->voice.controller().languageMode(), "en");
    EXPECT_EQ(ui->model().voice()->languageIndex(), 2);
    EXPECT_EQ(chosenValue(), "English");
}

TEST_F(LanguageTest, TheLanguagesStandInTheirOrderEachUnderItsOwnName) {
    start();
    openWithKeyboard();
    const std::pair<std::string, std::string> expected[] = {{"phone", "Podle iPhonu"}, {"cs", "Čeština"},
                                                            {"en", "English"},         {"de", "Deutsch"},
                                                            {"fr", "Français"},        {"es", "Español"}};
    ASSERT_EQ(ui->model().voice()->languages().size(), std::size(expected));
    goTo("Jazyk aplikace a asistentky");
    for (const auto& [mode, name] : expected) {
        EXPECT_EQ(features->voice.controller().languageMode(), mode);
        EXPECT_EQ(chosenValue(), name);
        give(Qt::Key_Down);
    }
    EXPECT_EQ(features->voice.controller().languageMode(), "es") << "there is none below";
}

} // namespace
} // namespace morvex
