#include "tests/app/ui/UiHarness.h"

namespace morvex {
namespace {

class ColorsTest : public UiHarness {
  protected:
    int lightness() { return window()->color().lightness(); }
};

TEST_F(ColorsTest, AnOpenWindowFollowsTheDesktop) {
    start();
    openUi();
    EXPECT_GT(lightness(), 200);
    colors.prefer(ColorScheme::Preference::dark);
    settle();
    EXPECT_LT(lightness(), 60);
    colors.prefer(ColorScheme::Preference::light);
    settle();
    EXPECT_GT(lightness(), 200);
}

} // namespace
} // namespace morvex
