#include "tests/app/ui/UiHarness.h"

namespace morvex {
namespace {

class LanguageTest : public UiHarness {
  protected:
    bool reads(const std::string& text) { return texts().find(text) != std::string::npos; }
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
    EXPECT_FALSE(reads("Povolené složky"));
}

TEST_F(LanguageTest, TheWindowHasEveryLanguageToChooseFrom) {
    start();
    openUi();
    EXPECT_EQ(names(QAccessible::ComboBox), std::vector<std::string>{"Jazyk aplikace a asistentky"});
    EXPECT_EQ(ui->model().voice()->languageIndex(), 0);
    ui->model().voice()->setLanguageMode(QStringLiteral("en"));
    settle();
    EXPECT_EQ(companion->hlas().languageMode(), "en");
    EXPECT_EQ(ui->model().voice()->languageIndex(), 2);
}

} // namespace
} // namespace morvex
