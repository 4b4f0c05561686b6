#include "app/execution/FileTools.h"

#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryBookmarks.h"
#include "platform/memory/MemoryDefaults.h"
#include "shared/wire/MacToolName.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// The tools with room for two small files an hour.
class FileToolsTest : public testing::Test {
  protected:
    FileToolsTest() {
        defaults.set("slozky.povolene", std::vector<DefaultsItem>{tree.path("home/Projects")});
        slozky = Slozky::create(defaults, bookmarks, picker, tree.standard);
        tools.emplace(*slozky, executor, WriteAllowance(clock, smallFile * 2), stop.get_token());
        tools->addTo(table, [] { return true; });
    }

    ToolOutcome call(std::string_view name, boost::json::object arguments) {
        return executor.run(table.find(name)->run({std::string(name), std::move(arguments), "r"})).value();
    }

    /// "written", or the sentence of the refusal.
    std::string write(const std::string& path, const std::string& content = "x") {
        auto outcome = call(MacToolName::filesWrite, {{"path", path}, {"content", content}});
        return outcome.ok ? "written" : std::string(outcome.result.at("error").as_string());
    }

    [[nodiscard]] bool exists(const std::string& name) const {
        return std::filesystem::exists(tree.path("home/Projects/" + name));
    }

    static constexpr std::size_t smallFile = 8192; ///< on a disk: a block, and its entry
    static constexpr auto enough =
        "Za poslední hodinu už bylo zapsáno tolik, kolik smí, tedy 1 GB. Zkus to později.";

    FileTree tree;
    ManualClock clock;
    ManualExecutor executor;
    MemoryDefaults defaults;
    MemoryBookmarks bookmarks;
    FakeFolderPicker picker;
    std::unique_ptr<Slozky> slozky;
    std::stop_source stop;
    std::optional<FileTools> tools;
    ToolTable table;
};

TEST_F(FileToolsTest, EachToolWorksInTheFolderThatIsNamed) {
    picker.answers.push_back({tree.path("outside")});
    ASSERT_TRUE(executor.run(slozky->pridat()));
    for (const std::string name : {"Projects", "outside"}) {
        const auto file = name + ".txt";
        const auto content = "in " + name;
        EXPECT_EQ(
            call(MacToolName::filesWrite, {{"path", file}, {"content", content}, {"folder", name}}).result,
            (boost::json::object{{"written", file}}));
        EXPECT_EQ(call(MacToolName::filesRead, {{"path", file}, {"folder", name}}).result,
                  (boost::json::object{{"content", content}}));
        EXPECT_EQ(call(MacToolName::filesSearch, {{"folder", name}}).result,
                  (boost::json::object{{"count", 1}, {"files", {file}}}));
    }
    EXPECT_EQ(tree.content("home/Projects/Projects.txt"), "in Projects");
    EXPECT_EQ(tree.content("outside/outside.txt"), "in outside");
}

TEST_F(FileToolsTest, ASearchFindsFiftyFilesAtMost) {
    for (int i = 0; i < 60; ++i) tree.file("home/Projects/a" + std::to_string(i), "");
    const auto tool = table.find(MacToolName::filesSearch);
    auto outcome = executor.run(tool->run({"mac.files.search", {{"pattern", "a"}}, "r"})).value();
    EXPECT_EQ(outcome.result.at("count"), 50);
    EXPECT_EQ(outcome.result.at("files").as_array().size(), 50U);
}

TEST_F(FileToolsTest, WhatIsWrittenWithinAnHourHasASumAndASentence) {
    EXPECT_EQ(write("a.txt"), "written");
    EXPECT_EQ(write("b.txt"), "written");
    EXPECT_EQ(write("c.txt"), enough);
    EXPECT_FALSE(exists("c.txt"));
    clock.advance(61min);
    EXPECT_EQ(write("c.txt"), "written");
}

TEST_F(FileToolsTest, AFileCountsByWhatItTakesOnADisk) {
    EXPECT_EQ(write("long.txt", std::string(9000, 'x')), "written");
    EXPECT_EQ(write("b.txt"), enough);
}

TEST_F(FileToolsTest, AWholeBlockIsOneBlock) {
    EXPECT_EQ(write("whole.txt", std::string(4096, 'x')), "written");
    EXPECT_EQ(write("b.txt"), "written");
}

TEST_F(FileToolsTest, FoldersThatAreMadeForAFileCount) {
    EXPECT_EQ(write("one/two/a.txt"), "written");
    EXPECT_EQ(write("b.txt"), enough);
}

TEST_F(FileToolsTest, ACallThatWritesNothingCountsForNothing) {
    for (int i = 0; i < 9; ++i) {
        EXPECT_NE(write("/etc/morvex.txt"), enough);
        EXPECT_NE(write(".ssh/a"), enough);
    }
    EXPECT_EQ(write("a.txt"), "written");
    for (int i = 0; i < 9; ++i) EXPECT_NE(write("a.txt"), enough) << "it exists";
    EXPECT_EQ(write("b.txt"), "written");
}

TEST_F(FileToolsTest, AWriteThatFailsOnTheDiskCountsWhole) {
    const std::string tooLong(300, 'n');
    EXPECT_NE(write(tooLong), "written");
    EXPECT_NE(write(tooLong), enough);
    EXPECT_EQ(write("a.txt"), enough);
}

} // namespace
} // namespace morvex
