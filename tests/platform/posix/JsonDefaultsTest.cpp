#include "platform/posix/JsonDefaults.h"

#include "platform/posix/base/AtomicFile.h"
#include "tests/support/ImmediateDefaults.h"
#include "tests/support/TemporaryFolder.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <fstream>
#include <sys/stat.h>

namespace morvex {
namespace {

using Items = std::vector<DefaultsItem>;

class JsonDefaultsTest : public testing::Test {
  protected:
    ImmediateDefaults load() { return ImmediateDefaults(folder_.path()); }

    void write(const std::string& text) {
        std::filesystem::create_directories(path_.parent_path());
        std::ofstream(path_) << text;
    }

    boost::json::value written() {
        auto bytes = readWhole(path_, JsonDefaults::sizeLimit);
        return bytes && *bytes ? boost::json::parse(asText(**bytes)) : boost::json::value();
    }

    TemporaryFolder folder_;
    std::filesystem::path path_ = folder_.path() / "Morvex" / "defaults.json";
};

TEST_F(JsonDefaultsTest, KeepsEveryKindOfValue) {
    const DefaultsValue values[] = {true,
                                    false,
                                    std::string(),
                                    std::string("žluťoučký\n\"kůň\""),
                                    Bytes(),
                                    Bytes{0, 255, 1},
                                    Items(),
                                    Items{"a", "b"},
                                    Items{Bytes{1}, Bytes{2, 3}}};
    for (const auto& value : values) {
        load().set("key", value);
        EXPECT_EQ(load().get("key"), value);
    }
}

TEST_F(JsonDefaultsTest, AMissingFileHoldsNothingAndIsNoProblem) {
    auto defaults = load();
    EXPECT_FALSE(defaults.get("key"));
    EXPECT_FALSE(defaults.problem());
    defaults.remove("key");
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(JsonDefaultsTest, SeveralValuesGoIntoOneSave) {
    auto defaults = load();
    defaults.setTogether({{"a", true}, {"b", "text"}, {"c", Bytes{1}}});
    auto again = load();
    EXPECT_EQ(again.boolean("a"), true);
    EXPECT_EQ(again.text("b"), "text");
    EXPECT_EQ(again.data("c"), Bytes{1});
}

TEST_F(JsonDefaultsTest, WritesOneFlatObject) {
    auto defaults = load();
    defaults.set("bdelost.drzet", true);
    defaults.set("slozky", Items{Bytes{1, 2, 3}, "text"});
    EXPECT_EQ(written(),
              boost::json::parse(R"({"bdelost.drzet": true, "slozky": [{"$data": "AQID"}, "text"]})"));
    defaults.remove("slozky");
    EXPECT_EQ(written(), boost::json::parse(R"({"bdelost.drzet": true})"));
}

TEST_F(JsonDefaultsTest, TheFileIsPrivate) {
    load().set("key", true);
    struct stat status{};
    ASSERT_EQ(::stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST_F(JsonDefaultsTest, ValuesOfOtherKindsReadAsAbsentAndAreKept) {
    const std::string foreign =
        R"({"number": 18446744073709551615, "fraction": 1.5, "null": null, "object": {"a": 1}, "nested": [["a"]],
            "mixed": ["a", 1], "two": {"$data": "AQ==", "x": 1}, "bad": {"$data": "A"}, "typed": {"$data": 1}})";
    write(foreign);
    auto defaults = load();
    auto expected = boost::json::parse(foreign).as_object();
    for (const auto& entry : expected) EXPECT_FALSE(defaults.get(entry.key())) << entry.key();
    EXPECT_FALSE(defaults.problem());
    defaults.set("key", "value");
    expected["key"] = "value";
    EXPECT_EQ(written(), boost::json::value(expected));
}

TEST_F(JsonDefaultsTest, ADamagedFileIsSetAsideAndNotOverwritten) {
    const char* damaged[] = {"",
                             "{",
                             "[]",
                             "null",
                             "{\"a\": \"\xff\"}",
                             "{\"a\": true} x",
                             "{\"a\": 1e999}",
                             "{\"a\": [{\"b\": -1e999}]}"};
    int number = 0;
    for (const char* text : damaged) {
        write(text);
        auto defaults = load();
        EXPECT_FALSE(std::filesystem::exists(path_)) << text;
        auto name = "defaults.json.damaged" + (++number == 1 ? "" : "-" + std::to_string(number));
        EXPECT_EQ(readWhole(path_.parent_path() / name, 100).value(), toBytes(text));
        EXPECT_EQ(defaults.problem(), "Soubor s nastavením byl poškozený; je odložený jako " + name);
        defaults.set("key", true);
        EXPECT_EQ(load().boolean("key"), true);
        EXPECT_TRUE(defaults.problem());
    }
}

TEST_F(JsonDefaultsTest, AFileThatIsTooLongIsSetAside) {
    write("{}");
    std::filesystem::resize_file(path_, JsonDefaults::sizeLimit + 1);
    EXPECT_TRUE(load().problem());
    EXPECT_TRUE(std::filesystem::exists(path_.string() + ".damaged"));
}

TEST_F(JsonDefaultsTest, WhatCannotBeReadIsLeftAlone) {
    std::filesystem::create_directories(path_);
    auto defaults = load();
    defaults.set("key", true);
    EXPECT_EQ(defaults.boolean("key"), true);
    EXPECT_EQ(defaults.problem(), "Nastavení se nepodařilo uložit: Takovou cestu nejde použít.");
    EXPECT_TRUE(std::filesystem::is_empty(path_));
}

TEST_F(JsonDefaultsTest, ChangesOfAFileThatCannotBeReadComeIntoItOnceItCan) {
    std::filesystem::create_directories(path_);
    auto defaults = load();
    EXPECT_EQ(defaults.problem(), "Soubor s nastavením nejde přečíst: Takovou cestu nejde použít.");
    defaults.set("list", Items{});
    EXPECT_FALSE(defaults.unsavedProblem()) << "an empty list is no change of an unknown one";
    defaults.set("switch", false);
    EXPECT_TRUE(defaults.unsavedProblem());
    std::filesystem::remove(path_);
    write(R"({"kept":"text","switch":true})");
    defaults.set("other", true);
    EXPECT_FALSE(defaults.unsavedProblem());
    EXPECT_EQ(defaults.problem(), "Soubor s nastavením nejde přečíst: Takovou cestu nejde použít.");
    const auto whole = load();
    EXPECT_EQ(whole.text("kept"), "text");
    EXPECT_EQ(whole.boolean("switch"), false);
    EXPECT_EQ(whole.boolean("other"), true);
}

TEST_F(JsonDefaultsTest, ABooleanThatWasChangedTogetherWithATextDoesNotComeIntoItAlone) {
    std::filesystem::create_directories(path_);
    auto defaults = load();
    defaults.setTogether({{"received", true}, {"language", std::string("de")}});
    defaults.changeTogether({{"given", true}}, {"name"});
    std::filesystem::remove(path_);
    write(R"({"language":"cs","received":false,"given":false,"name":"kept"})");
    defaults.set("switch", true);
    EXPECT_TRUE(defaults.unsavedProblem());
    EXPECT_EQ(load().boolean("received"), false);
    EXPECT_EQ(load().boolean("given"), false);
    EXPECT_EQ(load().boolean("switch"), true);
    defaults.set("received", false);
    defaults.set("received", true);
    EXPECT_EQ(load().boolean("received"), true) << "changed alone since";
}

TEST_F(JsonDefaultsTest, WhatWasMadeWithoutTheKeptValuesDoesNotReplaceThem) {
    std::filesystem::create_directories(path_);
    auto defaults = load();
    defaults.set("list", Items{std::string("new")});
    defaults.set("text", "new");
    std::filesystem::remove(path_);
    write(R"({"list":["kept"],"text":"kept"})");
    defaults.set("switch", false);
    EXPECT_EQ(defaults.unsavedProblem(), "Nastavení se nepodařilo uložit: Soubor s ním při startu nešel "
                                         "přečíst. Ukonči Morvex a spusť ho znovu.");
    EXPECT_EQ(load().texts("list"), std::vector<std::string>{"kept"});
    EXPECT_EQ(load().text("text"), "kept");
    EXPECT_EQ(load().boolean("switch"), false);
}

TEST_F(JsonDefaultsTest, AFailedWriteKeepsTheValueAndIsTriedAgainWithTheNext) {
    auto defaults = load();
    std::filesystem::create_directories(path_);
    defaults.set("first", "one");
    EXPECT_EQ(defaults.text("first"), "one");
    EXPECT_EQ(defaults.problem(), "Nastavení se nepodařilo uložit: Na této cestě je složka.");
    std::filesystem::remove(path_);
    defaults.set("second", "two");
    EXPECT_FALSE(defaults.problem());
    EXPECT_EQ(load().text("first"), "one");
    EXPECT_EQ(load().text("second"), "two");
}

TEST_F(JsonDefaultsTest, AFailedWriteIsTriedAgainUntilItSucceeds) {
    auto defaults = load();
    std::filesystem::create_directories(path_);
    defaults.set("key", "value");
    defaults.retry();
    EXPECT_TRUE(defaults.problem());
    std::filesystem::remove(path_);
    defaults.retry();
    EXPECT_FALSE(defaults.problem());
    EXPECT_EQ(load().text("key"), "value");
    std::filesystem::remove(path_);
    defaults.retry();
    EXPECT_FALSE(std::filesystem::exists(path_)) << "what is saved is not saved again";
}

TEST_F(JsonDefaultsTest, EachChangeOfTheTroubleIsTold) {
    auto defaults = load();
    std::vector<bool> told;
    const auto connection = defaults.onProblem([&] { told.push_back(defaults.problem().has_value()); });
    defaults.set("key", "value");
    std::filesystem::remove(path_);
    std::filesystem::create_directories(path_);
    defaults.set("key", "other");
    defaults.retry();
    std::filesystem::remove(path_);
    defaults.retry();
    EXPECT_EQ(told, (std::vector{true, false}));
}

TEST_F(JsonDefaultsTest, MoreThanCouldBeReadAgainIsNotWritten) {
    auto defaults = load();
    defaults.set("key", "small");
    defaults.set("key", std::string(JsonDefaults::sizeLimit, 'x'));
    EXPECT_TRUE(defaults.problem());
    EXPECT_EQ(load().text("key"), "small");
}

TEST_F(JsonDefaultsTest, MoreTextsThanCouldBeReadAgainAreNotWritten) {
    auto defaults = load();
    defaults.set("key", Items{"a"});
    defaults.set("key", Items(70'000, "a"));
    EXPECT_EQ(defaults.problem(), "Nastavení se nepodařilo uložit: Zpráva má příliš mnoho hodnot.");
    EXPECT_EQ(load().get("key"), DefaultsValue(Items{"a"}));
}

TEST_F(JsonDefaultsTest, AFileWithMoreKeysThanMayCollideIsSetAside) {
    for (const int keys : {1400, 1500}) {
        std::string text = "{";
        for (int i = 0; i < keys; ++i) text += '"' + std::to_string(i) + "\":true,";
        write(text + "\"last\":true}");
        EXPECT_EQ(load().get("last").has_value(), keys == 1400) << keys;
    }
}

TEST_F(JsonDefaultsTest, TextThatIsNotUtf8CannotDamageTheFile) {
    load().set("key", "a\xff");
    auto defaults = load();
    EXPECT_FALSE(defaults.problem());
    EXPECT_EQ(defaults.text("key"), "a\uFFFD");
}

TEST_F(JsonDefaultsTest, AnEqualValueIsNotWrittenAgain) {
    auto defaults = load();
    defaults.set("key", true);
    std::filesystem::remove(path_);
    defaults.set("key", true);
    EXPECT_FALSE(std::filesystem::exists(path_));
}

} // namespace
} // namespace morvex
