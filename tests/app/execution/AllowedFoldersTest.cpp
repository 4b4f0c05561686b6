#include "app/execution/AllowedFolders.h"

#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(AllowedFolders, AnAbsentOrBlankNameMeansTheOnlyFolder) {
    FileTree tree;
    auto one = tree.allowed();
    auto two = tree.allowed({"home/Projects", "outside"});
    for (const auto& alias : {std::optional<std::string>(), std::optional<std::string>(""),
                              std::optional<std::string>(" \n\u00a0")}) {
        EXPECT_EQ(one.slozkaProAlias(alias), tree.path("home/Projects"));
        EXPECT_EQ(two.slozkaProAlias(alias), std::nullopt);
        EXPECT_EQ(tree.allowed({}).slozkaProAlias(alias), std::nullopt);
    }
}

TEST(AllowedFolders, ANameIsFoundWithoutCaseAndDiacritics) {
    FileTree tree;
    auto slozky = tree.allowed({"home/Projects", "home/Účetní Knihy"});
    EXPECT_EQ(slozky.slozkaProAlias("PROJECTS"), tree.path("home/Projects"));
    EXPECT_EQ(slozky.slozkaProAlias("  ucetni knihy\n"), tree.path("home/Účetní Knihy"));
    EXPECT_EQ(slozky.slozkaProAlias("u\u0301c\u030cetni\u0301 knihy"), tree.path("home/Účetní Knihy"));
    EXPECT_EQ(slozky.slozkaProAlias("Project"), std::nullopt);
    EXPECT_EQ(slozky.slozkaProAlias("home/Projects"), std::nullopt);
}

TEST(AllowedFolders, ANameOfMoreThan4096BytesNamesNothing) {
    FileTree tree;
    auto slozky = tree.allowed({"home/Projects", "outside"});
    std::string name = "projects";
    while (name.size() < 4096) name += "\u0301";
    EXPECT_EQ(slozky.slozkaProAlias(name), tree.path("home/Projects"));
    EXPECT_EQ(slozky.slozkaProAlias(name + "\u0301"), std::nullopt);
}

TEST(AllowedFolders, TheFirstOfEqualNamesIsFound) {
    FileTree tree;
    EXPECT_EQ(tree.allowed({"a/Data", "b/data"}).slozkaProAlias("data"), tree.path("a/Data"));
}

TEST(AllowedFolders, EveryDesktopAliasFindsAFolderNamedDesktopAndNoOther) {
    FileTree tree;
    auto slozky = tree.allowed({"home/Projects", "home/Desktop"});
    for (const auto* alias :
         {"desktop", "Plocha", "PLOCHÁ", "na ploše", "Pracovní plocha", "desktop folder"}) {
        EXPECT_EQ(slozky.slozkaProAlias(alias), tree.path("home/Desktop")) << alias;
        EXPECT_EQ(tree.allowed().slozkaProAlias(alias), std::nullopt) << alias;
    }
    EXPECT_EQ(slozky.slozkaProAlias("ploše"), std::nullopt);
}

TEST(AllowedFolders, TheDesktopOfTheSystemIsFoundUnderAnyNameAndThroughLinks) {
    FileTree tree;
    tree.folder("home/Schreibtisch");
    tree.link("home/there", "Schreibtisch");
    tree.standard.desktopFolder = tree.path("home/there");
    EXPECT_EQ(tree.allowed({"home/Projects", "home/Schreibtisch"}).slozkaProAlias("plocha"),
              tree.path("home/Schreibtisch"));
}

TEST(AllowedFolders, ADesktopIsKnownByItsNameInAnyLetters) {
    FileTree tree;
    for (const std::string name : {"home/desktop", "home/DESKTOP", "home/De\u0301sktop"})
        EXPECT_EQ(tree.allowed({"home/Projects", name}).slozkaProAlias("na ploše"), tree.path(name));
    EXPECT_EQ(tree.allowed({"home/Projects", "home/Desktop folder"}).slozkaProAlias("plocha"), std::nullopt);
}

TEST(AllowedFolders, AnAllowedFolderThatLeadsToTheDesktopIsTheDesktop) {
    FileTree tree;
    tree.standard.desktopFolder = tree.folder("home/Schreibtisch");
    tree.link("home/way", "Schreibtisch");
    EXPECT_EQ(tree.allowed({"home/Projects", "home/way"}).slozkaProAlias("plocha"), tree.path("home/way"));
}

TEST(AllowedFolders, AFolderThatIsReallyNamedPlochaIsFoundByItsName) {
    FileTree tree;
    EXPECT_EQ(tree.allowed({"home/Plocha", "home/Desktop"}).slozkaProAlias("plocha"),
              tree.path("home/Plocha"));
}

TEST(AllowedFolders, TheFirstFolderThatMatchesIsFoundByItsNameOrAsTheDesktop) {
    FileTree tree;
    EXPECT_EQ(tree.allowed({"home/Desktop", "home/Plocha"}).slozkaProAlias("plocha"),
              tree.path("home/Desktop"));
}

TEST(AllowedFolders, ADesktopThatLoopsIsNoDesktop) {
    FileTree tree;
    tree.link("home/loop", "loop");
    tree.link("home/other", "other");
    tree.standard.desktopFolder = tree.path("home/loop");
    EXPECT_EQ(tree.allowed({"home/other"}).slozkaProAlias("plocha"), std::nullopt);
}

TEST(AllowedFolders, AFolderAdmitsItselfAndWhatLiesBelowButNoSiblingOfTheSamePrefix) {
    FileTree tree;
    auto slozky = tree.allowed();
    EXPECT_TRUE(slozky.obsahuje(tree.path("home/Projects")));
    EXPECT_TRUE(slozky.obsahuje(tree.path("home/Projects/")));
    EXPECT_TRUE(slozky.obsahuje(tree.path("home/Projects/a")));
    EXPECT_TRUE(slozky.obsahuje(tree.path("home/Projects/../Projects/a")));
    EXPECT_FALSE(slozky.obsahuje(tree.path("home/ProjectsOld")));
    EXPECT_FALSE(slozky.obsahuje(tree.path("home/Projects/../ProjectsOld")));
    EXPECT_FALSE(slozky.obsahuje(tree.path("home")));
    EXPECT_FALSE(slozky.obsahuje("/"));
    EXPECT_FALSE(tree.allowed({}).obsahuje(tree.path("home/Projects")));
}

TEST(AllowedFolders, ALinkInsideThatPointsOutsideIsOutside) {
    FileTree tree;
    tree.link("home/Projects/out", tree.path("outside"));
    EXPECT_FALSE(tree.allowed().obsahuje(tree.path("home/Projects/out")));
    EXPECT_FALSE(tree.allowed().obsahuje(tree.path("home/Projects/out/file")));
}

TEST(AllowedFolders, AFolderThatIsALinkAdmitsWhatItLeadsTo) {
    FileTree tree;
    tree.link("home/way", tree.path("outside"));
    auto slozky = tree.allowed({"home/way"});
    EXPECT_TRUE(slozky.obsahuje(tree.path("outside/file")));
    EXPECT_TRUE(slozky.obsahuje(tree.path("home/way/file")));
    EXPECT_EQ(slozky.folderAbove(tree.path("outside/file")), tree.path("outside"));
}

TEST(AllowedFolders, OfFoldersInEachOtherTheInnermostCounts) {
    FileTree tree;
    for (const auto& slozky :
         {tree.allowed({"home", "home/Projects"}), tree.allowed({"home/Projects", "home"})}) {
        EXPECT_EQ(slozky.folderAbove(tree.path("home/Projects/a")), tree.path("home/Projects"));
        EXPECT_EQ(slozky.folderAbove(tree.path("home/a")), tree.path("home"));
    }
}

TEST(AllowedFolders, OnlyNamesLeaveTheComputer) {
    FileTree tree;
    EXPECT_EQ(tree.allowed({"home/Projects", "outside"}).aliasy(),
              (std::vector<std::string>{"Projects", "outside"}));
}

/// The names of folders of one tree, each looked up again.
std::vector<std::string> namesOf(const AllowedFolders& slozky) {
    const auto names = slozky.aliasy();
    for (std::size_t at = 0; at < names.size(); ++at)
        EXPECT_EQ(slozky.slozkaProAlias(names[at]), slozky.slozky()[at]) << names[at];
    return names;
}

TEST(AllowedFolders, OfEqualNamesEachFolderButTheFirstIsNamedWithItsParents) {
    FileTree tree;
    using Names = std::vector<std::string>;
    EXPECT_EQ(namesOf(tree.allowed({"osobni/projekt", "prace/projekt", "jine"})),
              (Names{"projekt", "prace/projekt", "jine"}));
    EXPECT_EQ(namesOf(tree.allowed({"a/x/projekt", "b/x/projekt", "b/y/projekt", "c/y/projekt"})),
              (Names{"projekt", "b/x/projekt", "y/projekt", "c/y/projekt"}));
    EXPECT_EQ(namesOf(tree.allowed({"a/Účty", "b/UCTY"})), (Names{"Účty", "b/UCTY"}));
}

TEST(AllowedFolders, ANameStaysWithItsFolderWhenAnotherIsAllowedLater) {
    FileTree tree;
    const std::vector<std::string> all{"a/x/projekt", "b/projekt", "b/x/projekt", "x/projekt", "projekt"};
    std::vector<std::string> before;
    for (std::size_t count = 1; count <= all.size(); ++count) {
        auto names = namesOf(tree.allowed({all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count)}));
        names.pop_back();
        EXPECT_EQ(names, before);
        before = namesOf(tree.allowed({all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count)}));
    }
}

TEST(AllowedFolders, ANameWithParentsIsFoundWithoutCaseAndDiacritics) {
    FileTree tree;
    auto slozky = tree.allowed({"osobni/Účty", "Práce/Účty"});
    EXPECT_EQ(slozky.slozkaProAlias(" práce/účty\n"), tree.path("Práce/Účty"));
    EXPECT_EQ(slozky.slozkaProAlias("PRACE/UCTY"), tree.path("Práce/Účty"));
    EXPECT_EQ(slozky.slozkaProAlias("ucty"), tree.path("osobni/Účty"));
}

TEST(AllowedFolders, OnlyTheNamesThatAreToldName) {
    FileTree tree;
    auto slozky = tree.allowed({"osobni/projekt", "prace/projekt"});
    EXPECT_EQ(slozky.slozkaProAlias("osobni/projekt"), std::nullopt);
    EXPECT_EQ(slozky.slozkaProAlias("/prace/projekt"), std::nullopt);
    EXPECT_EQ(slozky.slozkaProAlias("prace/projekt/"), std::nullopt);
    EXPECT_EQ(slozky.slozkaProAlias(tree.path("prace/projekt")), std::nullopt);
}

TEST(AllowedFolders, FoldersThatDifferInCaseAloneAreNamedAsTheyAreSpelled) {
    FileTree tree;
    auto slozky = tree.allowed({"a/Projekt", "a/projekt", "a/PROJEKT"});
    EXPECT_EQ(namesOf(slozky), (std::vector<std::string>{"Projekt", "a/projekt", "a/PROJEKT"}));
    EXPECT_EQ(slozky.slozkaProAlias("a/Projekt"), tree.path("a/projekt")) << "the first that is told so";
}

TEST(AllowedFolders, AFolderWithoutAParentIsNamedWithTheSlashInFront) {
    FileTree tree;
    AllowedFolders slozky({"/nikde/projekt", "/projekt", "/Projekt", "/"}, tree.standard);
    EXPECT_EQ(namesOf(slozky), (std::vector<std::string>{"projekt", "/projekt", "/Projekt", "/"}));
}

TEST(AllowedFolders, AFolderThatIsNamedLikeTheDesktopBeforeItIsNamedWithItsParent) {
    FileTree tree;
    EXPECT_EQ(namesOf(tree.allowed({"home/Desktop", "prace/Plocha"})),
              (std::vector<std::string>{"Desktop", "prace/Plocha"}));
    EXPECT_EQ(namesOf(tree.allowed({"prace/Plocha", "home/Desktop"})),
              (std::vector<std::string>{"Plocha", "Desktop"}));
}

TEST(AllowedFolders, APathBeginsInTheFolderOfTheLongestNameThatItBeginsWith) {
    FileTree tree;
    auto slozky = tree.allowed({"osobni/projekt", "y/prace/projekt", "x/prace"});
    auto begun = [&slozky](const std::vector<std::string>& parts) -> std::string {
        auto found = slozky.leadingFolder(parts);
        return found ? found->slozka + " " + std::to_string(found->parts) : "none";
    };
    EXPECT_EQ(begun({"prace", "projekt", "a"}), tree.path("y/prace/projekt") + " 2");
    EXPECT_EQ(begun({"PRACE", "Projekt"}), tree.path("y/prace/projekt") + " 2");
    EXPECT_EQ(begun({"prace", "a"}), tree.path("x/prace") + " 1");
    EXPECT_EQ(begun({"projekt", "prace"}), tree.path("osobni/projekt") + " 1");
    EXPECT_EQ(begun({"a", "prace", "projekt"}), "none");
    EXPECT_EQ(begun({}), "none");
}

} // namespace
} // namespace morvex
