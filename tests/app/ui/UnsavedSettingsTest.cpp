#include "tests/support/UiHarness.h"

#include <algorithm>
#include <string>

namespace morvex {
namespace {

/// What a person sees of settings that cannot be saved, where they were changed.
class UnsavedSettingsTest : public UiHarness {
  protected:
    const std::string full = "Nastavení se nepodařilo uložit: Na disku není místo.";

    /// How often the window says it.
    [[nodiscard]] std::ptrdiff_t notes(QQuickWindow* in = nullptr) {
        return std::ranges::count(names(QAccessible::StaticText, in), full);
    }
};

TEST_F(UnsavedSettingsTest, AreToldOfInEachCardThatChangesThemAndInTheMenu) {
    startSecured();
    openUi();
    EXPECT_EQ(notes(), 0);
    defaults.setProblem(Sentence(full));
    settle();
    EXPECT_EQ(notes(), 4) << "folders, services, availability, about";
    ui->toggleMenu({});
    settle();
    ASSERT_NE(menu(), nullptr);
    EXPECT_EQ(notes(menu()), 1);
    defaults.setProblem({});
    settle();
    EXPECT_EQ(notes(), 0);
    EXPECT_EQ(notes(menu()), 0);
}

TEST_F(UnsavedSettingsTest, ASwitchThatCannotBeSavedStaysOffAndSaysWhy) {
    start();
    openUi();
    press("Soubory");
    defaults.refusal = TextError{"Na disku není místo."};
    press("Soubory");
    settle();
    EXPECT_FALSE(isOn("Soubory"));
    EXPECT_FALSE(companion->integrations().isOn(Integration::files));
    EXPECT_EQ(notes(), 1);
    defaults.refusal = std::nullopt;
    press("Soubory");
    settle();
    EXPECT_TRUE(isOn("Soubory"));
    EXPECT_EQ(notes(), 0);
}

TEST_F(UnsavedSettingsTest, ASwitchThatWasRefusedIsForgottenOnceTheSettingsAreSavedAgain) {
    start();
    openUi();
    press("Soubory");
    defaults.refusal = TextError{"Na disku není místo."};
    defaults.setProblem(Sentence(full));
    press("Soubory");
    settle();
    EXPECT_EQ(notes(), 4);
    defaults.setProblem({});
    settle();
    EXPECT_EQ(notes(), 0);
}

TEST_F(UnsavedSettingsTest, AFolderThatCannotBeSavedIsNotAllowedAndTheCardSaysWhy) {
    start();
    openUi();
    std::filesystem::create_directory(temporary.path() / "Projekty");
    picker.answers.push_back({(temporary.path() / "Projekty").string()});
    defaults.refusal = TextError{"Na disku není místo."};
    press("Přidat nebo obnovit složku");
    settle();
    EXPECT_TRUE(reads("Oprávnění ke složce Projekty se nepodařilo uložit: Na disku není místo."));
    EXPECT_TRUE(features->files.slozky().povolene().empty());
}

TEST_F(UnsavedSettingsTest, AnAppThatCannotBeSwitchedOnStaysOffAndTheSheetSaysWhy) {
    start();
    EXPECT_TRUE(ended(features->customApps.service().save({}, "Počasí", "https://example.com", "")));
    const auto id = features->customApps.service().apps().at(0).id;
    EXPECT_TRUE(ended(features->customApps.service().setEnabled(id, false)));
    openUi();
    press("Spravovat: Vlastní aplikace");
    settle();
    defaults.refusal = TextError{"Na disku není místo."};
    press("Počasí");
    settle();
    EXPECT_FALSE(features->customApps.service().apps().at(0).enabled);
    EXPECT_TRUE(reads(full));
}

} // namespace
} // namespace morvex
