#include "tests/app/console/ConsoleFixture.h"

#include <filesystem>

namespace morvex {
namespace {

class ConsoleFoldersTest : public ConsoleFixture {};

TEST_F(ConsoleFoldersTest, AllowsAndRemovesFoldersAlsoBelowTheHomeFolder) {
    std::filesystem::create_directory(temporary.path() / "Projekty");
    startShell();
    auto path = (temporary.path() / "Projekty").string();
    EXPECT_EQ(type("povolit ~/Projekty"), std::vector<std::string>{"Složka: " + path});
    EXPECT_EQ(type("povolit Projekty"), std::vector<std::string>{"Cesta ke složce začíná „/“ nebo „~“."});
    EXPECT_EQ(type("odebrat ~/Jiné"), std::vector<std::string>{"Složka „~/Jiné“ povolená není."});
    EXPECT_EQ(type("odebrat ~/Projekty/"), std::vector<std::string>{"Složky: žádná není povolená"});
}

TEST_F(ConsoleFoldersTest, AsksBeforeAFolderThatReachesFar) {
    startShell();
    const auto home = temporary.path().string();
    const std::vector<std::string> question{
        "Povolit složku " + home +
            "? To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.",
        "Odpověz „ano“ nebo „ne“."};
    EXPECT_EQ(type("povolit ~"), question);
    EXPECT_TRUE(features->files.slozky().povolene().empty());
    EXPECT_EQ(type("ne"), std::vector<std::string>{"Složky: žádná není povolená"});
    EXPECT_EQ(type("povolit ~/"), question);
    EXPECT_EQ(type("ano"), std::vector<std::string>{"Složka: " + home});
    EXPECT_EQ(type("ano"), std::vector<std::string>{"Na nic se teď neptám."});
    EXPECT_EQ(type("ne"), std::vector<std::string>{"Na nic se teď neptám."});
}

TEST_F(ConsoleFoldersTest, ANoToOneFolderSaysNothingOfTheNext) {
    std::filesystem::create_directory(temporary.path() / "Projekty");
    startShell();
    const auto path = (temporary.path() / "Projekty").string();
    // As lines that come together.
    shell->handle("povolit ~");
    shell->handle("povolit " + path);
    executor.runUntilIdle();
    type("ne");
    EXPECT_EQ(features->files.slozky().povolene(), std::vector{path});
}

TEST_F(ConsoleFoldersTest, AQuestionThatIsOpenAtTheEndDoesNotHoldTheProgram) {
    startShell();
    type("povolit /");
    EXPECT_TRUE(executor.run(companion->shutDown()));
    EXPECT_TRUE(features->files.slozky().povolene().empty());
}

TEST_F(ConsoleFoldersTest, OfFoldersOfOneNameTheSecondIsListedUnderItsOwn) {
    startShell();
    const auto at = [this](const std::string& name) { return (temporary.path() / name).string(); };
    for (const char* name : {"osobni/projekt", "prace/projekt"}) {
        std::filesystem::create_directories(at(name));
        type("povolit " + at(name));
    }
    EXPECT_EQ(type("odebrat /nic"), std::vector<std::string>{"Složka „/nic“ povolená není."});
    auto status = type("stav");
    EXPECT_TRUE(hasLine(status, "Složka: " + at("osobni/projekt")));
    EXPECT_TRUE(hasLine(status, "Složka: " + at("prace/projekt") + ", jménem prace/projekt"));
}

} // namespace
} // namespace morvex
