#include "tests/app/execution/SlozkyFixture.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Folders of which the person is asked again.
class WideFoldersTest : public SlozkyFixture {
  protected:
    WideFoldersTest() {
        connection = slozky->onQuestion([this] {
            asked.push_back(slozky->question() ? slozky->question()->slozka : "none");
            EXPECT_THAT(slozky->povolene(), IsEmpty()) << "the question stands before anything is allowed";
        });
    }

    void choose(std::vector<std::string> answer) {
        picker.answers.push_back(std::move(answer));
        executor.start(slozky->pridat());
        executor.runUntilIdle();
    }

    void answer(Slozky::Odpoved odpoved) {
        slozky->answerQuestion(odpoved);
        executor.runUntilIdle();
    }

    std::string home = tree.path("home");
    std::vector<std::string> asked;
    Connection connection;
    std::unique_ptr<Slozky> slozky = load();
};

TEST_F(WideFoldersTest, AFolderThatReachesFarIsAllowedAfterAYes) {
    choose({home + "/Projects/.."});
    EXPECT_EQ(slozky->question(), (WideFolder{home, WideFolder::Reach::homeFolder}));
    EXPECT_THAT(defaults.texts("slozky.povolene").value(), IsEmpty());
    EXPECT_THAT(bookmarks.calls, IsEmpty());
    answer(Slozky::Odpoved::yes);
    EXPECT_THAT(slozky->povolene(), ElementsAre(home));
    EXPECT_THAT(asked, ElementsAre(home, "none"));
}

TEST_F(WideFoldersTest, ANoLeavesAllAsItWas) {
    const int writes = defaults.writes;
    const auto changed = slozky->priZmene([] { ADD_FAILURE() << "nothing changed"; });
    choose({a, home, b});
    answer(Slozky::Odpoved::no);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_THAT(bookmarks.calls, IsEmpty());
    EXPECT_EQ(defaults.writes, writes);
    EXPECT_THAT(asked, ElementsAre(home, "none"));
}

TEST_F(WideFoldersTest, EachIsAskedAboutBeforeTheFirstIsAllowed) {
    choose({"/", a, home});
    answer(Slozky::Odpoved::yes);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    answer(Slozky::Odpoved::no);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_THAT(asked, ElementsAre("/", "none", home, "none"));
}

TEST_F(WideFoldersTest, AYesIsForTheQuestionThatIsOpen) {
    answer(Slozky::Odpoved::yes);
    choose({home});
    EXPECT_TRUE(slozky->question());
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    answer(Slozky::Odpoved::no);
}

TEST_F(WideFoldersTest, AnotherChoiceIsAskedAboutAfterwards) {
    choose({home});
    choose({"/"});
    answer(Slozky::Odpoved::no);
    EXPECT_EQ(slozky->question()->slozka, "/");
    answer(Slozky::Odpoved::no);
    EXPECT_THAT(asked, ElementsAre(home, "none", "/", "none"));
}

TEST_F(WideFoldersTest, AFolderThatNeedsNoQuestionDoesNotWaitForOne) {
    auto others = load();
    picker.answers = {{home}, {a}};
    executor.start(others->pridat());
    executor.start(others->pridat());
    executor.runUntilIdle();
    EXPECT_THAT(others->povolene(), ElementsAre(a));
    others->answerQuestion(Slozky::Odpoved::no);
    executor.runUntilIdle();
}

TEST_F(WideFoldersTest, TheEndOfTheProgramIsANo) {
    choose({home});
    slozky->shutDown();
    executor.runUntilIdle();
    EXPECT_EQ(slozky->question(), std::nullopt);
    choose({home});
    EXPECT_EQ(slozky->question(), std::nullopt);
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_THAT(asked, ElementsAre(home, "none"));
}

} // namespace
} // namespace morvex
