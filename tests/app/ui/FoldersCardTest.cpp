#include "tests/app/ui/ShownCompanion.h"

#include <algorithm>
#include <filesystem>

namespace morvex {
namespace {

class FoldersCardTest : public ShownCompanion {};

TEST_F(FoldersCardTest, AFolderIsAddedInADialogAndRemovedByItsRow) {
    start();
    openUi();
    const std::string none = "Žádná. Bez povolené složky nemá Codex ani Claude Code kde pracovat, takže se "
                             "telefonu vůbec nenabídnou.";
    EXPECT_TRUE(reads(none));
    EXPECT_TRUE(reads("Přidat složku jde jen odsud. Telefon ani asistentka seznam rozšířit nemůžou."));
    auto folder = temporary.path() / "Smlouvy";
    std::filesystem::create_directory(folder);
    picker.answers.push_back({folder.string()});
    press("Přidat nebo obnovit složku");
    EXPECT_EQ(features->files.slozky().povolene(), std::vector<std::string>{folder.string()});
    EXPECT_TRUE(reads("1 povolených složek"));
    EXPECT_FALSE(mentions("Žádná."));
    press("Odebrat: " + folder.string());
    EXPECT_TRUE(features->files.slozky().povolene().empty());
    EXPECT_TRUE(reads(none));
}

TEST_F(FoldersCardTest, AFolderThatReachesFarIsAskedAboutInASheet) {
    start();
    openWithKeyboard();
    const auto home = temporary.path().string();
    const auto ask = [&] {
        picker.answers.push_back({home + "/."});
        press("Přidat nebo obnovit složku");
        EXPECT_TRUE(reads("Povolit složku " + home + "?"));
        EXPECT_TRUE(reads("To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům."));
        EXPECT_TRUE(features->files.slozky().povolene().empty());
    };
    ask();
    press("Zrušit");
    EXPECT_FALSE(mentions("Povolit složku"));
    EXPECT_FALSE(features->files.slozky().question());
    ask();
    give(Qt::Key_Escape);
    EXPECT_FALSE(features->files.slozky().question());
    EXPECT_TRUE(features->files.slozky().povolene().empty());
    ask();
    press("Povolit");
    EXPECT_FALSE(mentions("Povolit složku"));
    EXPECT_EQ(features->files.slozky().povolene(), std::vector<std::string>{home});
}

TEST_F(FoldersCardTest, FoldersThatReachFarAreAskedAboutOneAfterTheOther) {
    start();
    openUi();
    picker.answers.push_back({"/", temporary.path().string()});
    press("Přidat nebo obnovit složku");
    EXPECT_TRUE(reads("Povolit složku /?"));
    EXPECT_TRUE(reads("To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty."));
    press("Povolit");
    EXPECT_TRUE(reads("Povolit složku " + temporary.path().string() + "?"));
    EXPECT_TRUE(features->files.slozky().povolene().empty());
    press("Zrušit");
    EXPECT_TRUE(features->files.slozky().povolene().empty());
}

TEST_F(FoldersCardTest, TheQuestionAboutAFolderComesBackWithTheWindow) {
    start();
    openUi();
    picker.answers.push_back({temporary.path().string()});
    press("Přidat nebo obnovit složku");
    window()->close();
    settle();
    EXPECT_TRUE(features->files.slozky().question()) << "closing the window is no answer";
    ui->openMainWindow();
    settle();
    EXPECT_TRUE(reads("To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům."));
    press("Povolit");
    EXPECT_EQ(features->files.slozky().povolene().size(), 1U);
}

TEST_F(FoldersCardTest, OfFoldersOfOneNameTheSecondIsNamedWithItsParent) {
    start();
    openUi();
    std::vector<std::string> chosen;
    for (const char* name : {"osobni/projekt", "prace/projekt"}) {
        chosen.push_back((temporary.path() / name).string());
        std::filesystem::create_directories(chosen.back());
    }
    picker.answers.push_back(chosen);
    press("Přidat nebo obnovit složku");
    const auto shown = texts();
    EXPECT_TRUE(shown.contains("\nprojekt\n")) << shown;
    EXPECT_TRUE(shown.contains("\nprace/projekt\n")) << shown;
}

TEST_F(FoldersCardTest, AFolderWithoutAWorkingBookmarkAsksToBeAllowedAgain) {
    defaults.set("slozky.povolene", std::vector<DefaultsItem>{temporary.path().string()});
    start();
    openUi();
    EXPECT_TRUE(reads("Vyžaduje znovu povolit"));
    EXPECT_TRUE(reads("U složek označených níže je potřeba jednou obnovit přístup. Klikni na Přidat nebo "
                      "obnovit složku a vyber je znovu."));
}

} // namespace
} // namespace morvex
