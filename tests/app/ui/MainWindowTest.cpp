#include "tests/support/UiHarness.h"

namespace morvex {
namespace {

using MainWindowTest = UiHarness;

TEST_F(MainWindowTest, HasTheNameOfTheProgramAndTheWidthOfItsColumn) {
    start();
    openUi();
    EXPECT_EQ(window()->title().toStdString(), "Morvex");
    EXPECT_EQ(window()->width(), 720);
    EXPECT_EQ(window()->height(), 560);
    EXPECT_EQ(window()->minimumWidth(), 420);
    EXPECT_EQ(window()->minimumHeight(), 360);
}

} // namespace
} // namespace morvex
