#include "tests/e2e/OnDesktop.h"

#include <filesystem>
#include <fstream>

namespace morvex {
namespace {

/// Puts a file in place of the folder, so that nobody can create the folder, whatever their rights.
std::string putFileInPlaceOf(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder.parent_path());
    std::ofstream(folder) << "no folder";
    return "Složku s daty „" + folder.string() + "“ nejde použít: Část cesty není složka.";
}

class UnusableDataTest : public OnDesktop {
  protected:
    const std::string words = putFileInPlaceOf(temporary.path() / "mac/.local/share/Morvex");
};

TEST_F(UnusableDataTest, IsToldInAWindowWhereThereIsADisplay) {
    auto mac = start();
    ASSERT_NO_FATAL_FAILURE(see(words));
    ASSERT_NO_FATAL_FAILURE(pressButton("Zavřít"));
    EXPECT_EQ(mac->wait(), 1);
    const auto output = mac->output();
    EXPECT_NE(output.find(words), std::string::npos) << output;
    EXPECT_NE(output.find("using the data folder: Not a directory"), std::string::npos) << output;
    EXPECT_EQ(output.find("už nad těmito daty běží"), std::string::npos) << output;
}

TEST_F(UnusableDataTest, IsToldOnTheConsoleAndByThePhone) {
    const auto console = runProgram("morvex", {"--console"}, environment("mac"));
    EXPECT_EQ(console.code, 1);
    EXPECT_NE(console.output.find(words), std::string::npos) << console.output;
    const auto ofThePhone = putFileInPlaceOf(temporary.path() / "phone/Morvex");
    const auto ended = phone({"status"});
    EXPECT_EQ(ended.code, 1);
    EXPECT_NE(ended.output.find(ofThePhone), std::string::npos) << ended.output;
    EXPECT_EQ(ended.output.find("už pracuje"), std::string::npos) << ended.output;
}

} // namespace
} // namespace morvex
