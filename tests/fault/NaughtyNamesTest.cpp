#include "tests/fault/NaughtyNames.h"

#include "foundation/Text.h"
#include "tests/fault/LaidTree.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

namespace morvex {
namespace {

const std::string below = "home/Projects/";

/// What changed in the tree, except folders.
std::map<std::string, std::string> madeSince(const LaidTree& tree,
                                             const std::map<std::string, std::string>& before) {
    auto made = tree.snapshot();
    for (const auto& [name, held] : before) {
        EXPECT_EQ(made[name], held) << name;
        made.erase(name);
    }
    auto isFolderOfAnother = [&](const auto& entry) {
        auto next = made.upper_bound(entry.first);
        return next != made.end() && next->first.starts_with(entry.first + "/");
    };
    std::erase_if(made, isFolderOfAnother);
    return made;
}

bool isShown(const std::string& file) {
    return !file.starts_with('.') && !file.contains("/.");
}

void expectFound(LaidTree& tree, const std::string& file) {
    std::vector<std::string> wanted;
    if (isShown(file)) wanted.push_back(repairUtf8(file));
    EXPECT_EQ(tree.search(""), wanted);
    EXPECT_EQ(tree.search(file.substr(file.find_last_of('/') + 1)), wanted);
}

void expectTaken(const NaughtyName& name) {
    LaidTree tree("");
    auto before = tree.snapshot();
    EXPECT_EQ(tree.write(name.asked, "text"), Answer::done);
    auto made = madeSince(tree, before);
    EXPECT_EQ(made, (std::map<std::string, std::string>{{below + *name.file, "text"}}));
    EXPECT_EQ(tree.read(name.asked).content, "text");
    EXPECT_EQ(tree.write(name.asked, "again"), Answer::exists);
    EXPECT_EQ(madeSince(tree, before), made);
    expectFound(tree, *name.file);
}

void expectRefused(const NaughtyName& name) {
    LaidTree tree("zz; /home/a; /outside/a; /a");
    auto before = tree.snapshot();
    EXPECT_NE(tree.write(name.asked, "text"), Answer::done);
    EXPECT_NE(tree.read(name.asked).answer, Answer::done);
    EXPECT_EQ(tree.snapshot(), before);
    // An empty name matches all files, and a refused one none outside.
    const auto found = name.asked.empty() ? std::vector<std::string>{"zz"} : std::vector<std::string>{};
    EXPECT_EQ(tree.search(name.asked), found);
}

/// Tries `name` as the name of a folder that is not allowed.
void expectNoFolder(const std::string& name) {
    LaidTree tree("file; /home/Music/file; /home/Films/file; /outside/file; /file",
                  {"home/Music", "home/Films"});
    tree.tellFolder(name);
    const auto before = tree.snapshot();
    EXPECT_NE(tree.read("file").answer, Answer::done);
    EXPECT_NE(tree.write("new", "text"), Answer::done);
    EXPECT_EQ(tree.search(""), std::nullopt);
    EXPECT_EQ(tree.snapshot(), before);
}

/// Tries `name` as the name of an allowed folder next to another one.
void expectFolder(const std::string& name) {
    const auto place = "home/" + name;
    LaidTree tree("/home/Music/file", {"home/Music", place});
    std::filesystem::create_directory(tree.rooted("$/home/") + name);
    tree.tellFolder(name);
    const auto before = tree.snapshot();
    EXPECT_EQ(tree.write("new", "text"), Answer::done);
    EXPECT_EQ(madeSince(tree, before), (std::map<std::string, std::string>{{place + "/new", "text"}}));
    EXPECT_EQ(tree.read("new").content, "text");
    EXPECT_EQ(tree.search(""), std::vector<std::string>{"new"});
}

TEST(NaughtyNames, AreWrittenReadAndFoundAsOneFileOrRefusedByAll) {
    auto names = naughtyNames();
    std::size_t taken = 0;
    for (const auto& name : names) {
        SCOPED_TRACE(testing::PrintToString(name.asked.substr(0, 300)));
        if (name.file)
            expectTaken(name);
        else
            expectRefused(name);
        if (name.file) ++taken;
    }
    tell("Naughty names", names.size(), std::to_string(taken) + " taken, the others refused");
    std::set<std::string> different;
    for (const auto& name : names) different.insert(name.asked);
    EXPECT_EQ(different.size(), names.size());
    EXPECT_GE(names.size(), 200U);
}

TEST(NaughtyNames, NameNoFolderButTheOneThatIsCalledSo) {
    std::size_t allowed = 0;
    const auto names = naughtyNames();
    for (const auto& name : names) {
        SCOPED_TRACE(testing::PrintToString(name.asked.substr(0, 300)));
        expectNoFolder(name.asked);
        if (name.file != name.asked || name.asked.contains('/')) continue;
        expectFolder(name.asked);
        ++allowed;
    }
    EXPECT_GE(allowed, 100U);
    tell("Naughty names of folders", names.size(),
         "none lead anywhere, but for " + std::to_string(allowed) + " to the allowed folder of that name");
}

} // namespace
} // namespace morvex
