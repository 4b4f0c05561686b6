#include "tests/app/execution/SlozkyFixture.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Folders of which the person is asked again.
class SirokeSlozkyTest : public SlozkyFixture {
  protected:
    SirokeSlozkyTest() {
        connection = slozky->priOtazce([this] {
            asked.push_back(slozky->otazka() ? slozky->otazka()->slozka : "none");
            EXPECT_THAT(slozky->povolene(), IsEmpty()) << "the question stands before anything is allowed";
        });
    }

    void choose(std::vector<std::string> answer) {
        picker.answers.push_back(std::move(answer));
        executor.start(slozky->pridat());
        executor.runUntilIdle();
    }

    void answer(Slozky::Odpoved odpoved) {
        slozky->odpovedet(odpoved);
        executor.runUntilIdle();
    }

    std::string home = tree.path("home");
    std::vector<std::string> asked;
    Connection connection;
    std::unique_ptr<Slozky> slozky = load();
};

TEST_F(SirokeSlozkyTest, AFolderThatReachesFarIsAllowedAfterAYes) {
    choose({home + "/Projects/.."});
    EXPECT_EQ(slozky->otazka(), (SirokaSlozka{home, SirokaSlozka::Dosah::domov}));
    EXPECT_THAT(defaults.texts("slozky.povolene").value(), IsEmpty());
    EXPECT_THAT(bookmarks.calls, IsEmpty());
    answer(Slozky::Odpoved::ano);
    EXPECT_THAT(slozky->povolene(), ElementsAre(home));
    EXPECT_THAT(asked, ElementsAre(home, "none"));
}

TEST_F(SirokeSlozkyTest, ANoLeavesAllAsItWas) {
    const int writes = defaults.writes;
    const auto changed = slozky->priZmene([] { ADD_FAILURE() << "nothing changed"; });
    choose({a, home, b});
    answer(Slozky::Odpoved::ne);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_THAT(bookmarks.calls, IsEmpty());
    EXPECT_EQ(defaults.writes, writes);
    EXPECT_THAT(asked, ElementsAre(home, "none"));
}

TEST_F(SirokeSlozkyTest, EachIsAskedAboutBeforeTheFirstIsAllowed) {
    choose({"/", a, home});
    answer(Slozky::Odpoved::ano);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    answer(Slozky::Odpoved::ne);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_THAT(asked, ElementsAre("/", "none", home, "none"));
}

TEST_F(SirokeSlozkyTest, AYesIsForTheQuestionThatIsOpen) {
    answer(Slozky::Odpoved::ano);
    choose({home});
    EXPECT_TRUE(slozky->otazka());
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    answer(Slozky::Odpoved::ne);
}

TEST_F(SirokeSlozkyTest, AnotherChoiceIsAskedAboutAfterwards) {
    choose({home});
    choose({"/"});
    answer(Slozky::Odpoved::ne);
    EXPECT_EQ(slozky->otazka()->slozka, "/");
    answer(Slozky::Odpoved::ne);
    EXPECT_THAT(asked, ElementsAre(home, "none", "/", "none"));
}

TEST_F(SirokeSlozkyTest, AFolderThatNeedsNoQuestionDoesNotWaitForOne) {
    auto others = load();
    picker.answers = {{home}, {a}};
    executor.start(others->pridat());
    executor.start(others->pridat());
    executor.runUntilIdle();
    EXPECT_THAT(others->povolene(), ElementsAre(a));
    others->odpovedet(Slozky::Odpoved::ne);
    executor.runUntilIdle();
}

TEST_F(SirokeSlozkyTest, TheEndOfTheProgramIsANo) {
    choose({home});
    slozky->ukoncit();
    executor.runUntilIdle();
    EXPECT_EQ(slozky->otazka(), std::nullopt);
    choose({home});
    EXPECT_EQ(slozky->otazka(), std::nullopt);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_THAT(asked, ElementsAre(home, "none"));
}

} // namespace
} // namespace morvex
