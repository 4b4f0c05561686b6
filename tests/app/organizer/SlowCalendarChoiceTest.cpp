#include "app/organizer/CalendarChoice.h"
#include "tests/support/SlowDefaults.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using Texts = std::vector<std::string>;

/// A choice among the calendars A, B and C that is saved when the test runs the disk. A is enabled.
class SlowCalendarChoiceTest : public testing::Test {
  protected:
    SlowCalendarChoiceTest() {
        for (const char* id : {"B", "C"}) choice.forbid(id, present);
        writeAll();
    }

    void TearDown() override { writeAll(); }

    void enable(const std::string& id) { start(choice.allow(id, present)); }

    void chooseForNewEvents(const std::string& id) { start(choice.setWriteCalendar(id)); }

    void start(Task<Result<bool>> task) {
        disk.home.start(store(std::move(task)));
        disk.home.runUntilIdle();
    }

    Task<void> store(Task<Result<bool>> task) { took.push_back((co_await std::move(task)).value()); }

    void writeAll() {
        constexpr int saves = 5; // more than a test makes
        for (int i = 0; i < saves; ++i) disk.write();
    }

    [[nodiscard]] std::string enabled() const {
        std::string ids;
        for (const char* id : {"A", "B", "C"})
            if (choice.allows(id)) ids += id;
        return ids;
    }

    SlowDefaults disk;
    std::vector<CalendarInfo> present{{"A", "", "", true}, {"B", "", "", true}, {"C", "", "", true}};
    CalendarChoice choice{disk.defaults};
    std::vector<bool> took; ///< whether each choice took effect
};

TEST_F(SlowCalendarChoiceTest, ACalendarIsEnabledOnceThatIsSaved) {
    enable("B");
    EXPECT_EQ(enabled(), "A");
    disk.write();
    EXPECT_EQ(enabled(), "AB");
    EXPECT_EQ(disk.kept().texts("calendar.selectedIDs"), (Texts{"A", "B"}));
    EXPECT_EQ(took, std::vector<bool>{true});
}

TEST_F(SlowCalendarChoiceTest, ACalendarIsDisabledAtOnce) {
    choice.forbid("A", present);
    EXPECT_EQ(enabled(), "");
}

TEST_F(SlowCalendarChoiceTest, UntickingEndsATickThatIsNotSaved) {
    enable("B");
    choice.forbid("B", present);
    writeAll();
    EXPECT_EQ(enabled(), "A");
    EXPECT_EQ(disk.kept().texts("calendar.selectedIDs"), Texts{"A"});
    EXPECT_EQ(took, std::vector<bool>{false});
}

TEST_F(SlowCalendarChoiceTest, CalendarsThatAreEnabledTogetherAreAllEnabled) {
    enable("B");
    enable("C");
    writeAll();
    EXPECT_EQ(enabled(), "ABC");
    EXPECT_EQ(disk.kept().texts("calendar.selectedIDs"), (Texts{"A", "B", "C"}));
}

TEST_F(SlowCalendarChoiceTest, ACalendarThatGoesWhileItIsEnabledStaysOff) {
    enable("B");
    auto fewer = present;
    std::erase_if(fewer, [](const CalendarInfo& each) { return each.id == "B"; });
    choice.prune(fewer);
    writeAll();
    EXPECT_EQ(enabled(), "A");
    EXPECT_EQ(disk.kept().texts("calendar.selectedIDs"), Texts{"A"});
}

TEST_F(SlowCalendarChoiceTest, TheCalendarForNewEventsCountsOnceItIsSaved) {
    chooseForNewEvents("A");
    EXPECT_EQ(choice.writeCalendarID(), std::nullopt);
    disk.write();
    EXPECT_EQ(choice.writeCalendarID(), "A");
    EXPECT_EQ(disk.kept().text("calendar.writeID"), "A");
}

TEST_F(SlowCalendarChoiceTest, AChoiceThatIsClearedMeanwhileDoesNotComeBack) {
    chooseForNewEvents("A");
    choice.clearWriteCalendar();
    writeAll();
    EXPECT_EQ(choice.writeCalendarID(), std::nullopt);
    EXPECT_EQ(disk.kept().get("calendar.writeID"), std::nullopt);
    EXPECT_EQ(took, std::vector<bool>{false});
}

TEST_F(SlowCalendarChoiceTest, ACalendarThatIsDisabledMeanwhileTakesNoEvents) {
    chooseForNewEvents("A");
    choice.forbid("A", present);
    writeAll();
    EXPECT_EQ(choice.writeCalendarID(), std::nullopt);
    EXPECT_EQ(disk.kept().get("calendar.writeID"), std::nullopt);
}

TEST_F(SlowCalendarChoiceTest, OfTwoChoicesTheLastOneCounts) {
    enable("B");
    writeAll();
    chooseForNewEvents("A");
    chooseForNewEvents("B");
    writeAll();
    EXPECT_EQ(choice.writeCalendarID(), "B");
    EXPECT_EQ(disk.kept().text("calendar.writeID"), "B");
}

} // namespace
} // namespace morvex
