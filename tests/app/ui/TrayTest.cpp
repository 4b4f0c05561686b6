#include "tests/support/UiHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

class TrayTest : public UiHarness {
  protected:
    void pass(std::chrono::seconds time) {
        clock.advance(time);
        settle();
    }
};

TEST_F(TrayTest, ACompanionWithAPhoneShowsNoWindowWhereThereIsATray) {
    startSecured();
    tray.come();
    startUi();
    pass(1min);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(TrayTest, WithoutAPhoneTheWindowOpensAtOnceEvenWhereThereIsATray) {
    start();
    tray.come();
    startUi();
    EXPECT_NE(window(), nullptr);
}

TEST_F(TrayTest, ATrayThatComesAfterTheProgramKeepsTheWindowClosed) {
    startSecured();
    startUi();
    pass(4s);
    EXPECT_EQ(window(), nullptr);
    tray.come();
    pass(1min);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(TrayTest, WhereNoTrayComesTheWindowOpensAfterSomeSeconds) {
    startSecured();
    startUi();
    EXPECT_EQ(window(), nullptr);
    pass(5s);
    EXPECT_NE(window(), nullptr);
    window()->close();
    pass(1min);
    EXPECT_EQ(window(), nullptr) << "once";
    tray.come();
    tray.go();
    tray.come();
    pass(1min);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(TrayTest, TwoPressesOfADoubleClickCountAsOne) {
    startSecured();
    startUi();
    for (bool opens : {true, false}) {
        ui->toggleMenu({});
        settle();
        ui->toggleMenu({});
        settle();
        EXPECT_EQ(menu() != nullptr, opens);
        pass(1s);
    }
}

} // namespace
} // namespace morvex
