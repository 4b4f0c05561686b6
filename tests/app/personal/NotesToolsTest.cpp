#include "app/personal/NotesTools.h"

#include "platform/memory/ManualExecutor.h"
#include "shared/base/FrameLimit.h"
#include "shared/wire/Json.h"
#include "tests/app/personal/PersonalStores.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

class NotesToolsTest : public PersonalStores {
  protected:
    NotesToolsTest() {
        tools.addTo(table, [this] { return isOn; });
    }

    ToolOutcome call(const std::string& name, const std::string& arguments) {
        const auto tool = table.find("mac.notes." + name);
        auto parsed = parseJson(arguments).value().as_object();
        return executor.run(tool->run({"mac.notes." + name, std::move(parsed), "r"})).value();
    }

    void create(const std::string& title, const std::string& body) {
        ASSERT_TRUE(executor.run(store.vytvorit(title, body)).value());
    }

    ManualExecutor executor;
    PoznamkyStore store{support.path(), {executor, executor, clock}, random};
    NotesTools tools{store};
    ToolTable table;
    bool isOn = true;
};

TEST_F(NotesToolsTest, AreOfferedWhileTheyAreOn) {
    std::vector<std::string> names;
    for (const auto& tool : table.offered()) names.push_back(tool.name);
    EXPECT_EQ(names, (std::vector<std::string>{"mac.notes.search", "mac.notes.create", "mac.notes.update",
                                               "mac.notes.delete"}));
    isOn = false;
    EXPECT_TRUE(table.offered().empty());
}

TEST_F(NotesToolsTest, CreateUpdateAndDeleteTellTheStoredTitle) {
    EXPECT_EQ(encode(call("create", R"({"title":" Nákup ","body":"mléko"})").result),
              R"({"created":true,"title":"Nákup"})");
    auto updated = call("update", R"({"title":"nakup","new_title":" Velký nákup","body":"mouka"})");
    EXPECT_TRUE(updated.ok);
    EXPECT_EQ(encode(updated.result), R"({"updated":true,"title":"Velký nákup"})");
    EXPECT_EQ(store.notes()[0].body, "mouka");
    auto deleted = call("delete", R"({"title":"VELKY NAKUP"})");
    EXPECT_TRUE(deleted.ok);
    EXPECT_EQ(encode(deleted.result), R"({"deleted":true,"title":"Velký nákup"})");
    EXPECT_TRUE(store.notes().empty());
}

/// Only so many, whoever makes them, are held as they are compared.
TEST_F(NotesToolsTest, NotesThatWereSearchedAndDeletedLeaveNothingBehind) {
    create("Zůstane", "obsah");
    for (int round = 0; round < 3; ++round) {
        create("Nákup", "mléko");
        EXPECT_TRUE(call("search", R"({"query":"nic takového"})").ok);
        EXPECT_EQ(store.folded(), 2U);
        EXPECT_TRUE(call("delete", R"({"title":"nakup"})").ok);
        EXPECT_EQ(store.folded(), 1U);
    }
    MorvexNote note{random.uuid(), "Z telefonu", "obsah", clock.now(), clock.now(), 1, {}};
    EXPECT_TRUE(executor.run(store.prijmout(note)));
    EXPECT_TRUE(call("search", R"({"query":"nic takového"})").ok);
    note.revision = 2;
    note.deletedAt = clock.now();
    EXPECT_TRUE(executor.run(store.prijmout(note)));
    EXPECT_EQ(store.folded(), 1U);
}

TEST_F(NotesToolsTest, WhatIsFoundAndFillsNoFrameIsRefusedBeforeAnAnswerIsMadeOfIt) {
    const std::string half(frameLimit / 2 - 100, 'x');
    create("první", half);
    create("druhá", half);
    EXPECT_TRUE(call("search", R"({"query":"xxx"})").ok);
    create("třetí", std::string(200, 'x'));
    const auto refused = call("search", R"({"query":"xxx"})");
    EXPECT_FALSE(refused.ok);
    EXPECT_EQ(encode(refused.result), R"({"error":"Výsledek je na přenos příliš dlouhý."})");
    EXPECT_TRUE(call("search", R"({"query":"xxx","limit":2})").ok);
}

TEST_F(NotesToolsTest, SearchGivesIdTitleBodyAndTheTimeOfTheLastChange) {
    create("Nákup", "mléko");
    clock.advance(1500ms);
    create("Auto", "servis");
    auto found = call("search", R"({"query":"nák"})");
    EXPECT_TRUE(found.ok);
    EXPECT_EQ(encode(found.result), R"({"notes":[{"id":"00000000-0000-4000-8000-000000000001",)"
                                    R"("title":"Nákup","body":"mléko",)"
                                    R"("updated_at":"2027-01-15T08:00:00Z"}]})");
    EXPECT_EQ(encode(call("search", R"({"query":"vlak"})").result), R"({"notes":[]})");
}

TEST_F(NotesToolsTest, SearchGivesTenNotesUnlessALimitIsGiven) {
    for (int i = 0; i < 30; ++i) create("p" + std::to_string(i), "obsah");
    auto count = [this](const std::string& arguments) {
        return call("search", arguments).result["notes"].as_array().size();
    };
    EXPECT_EQ(count("{}"), 10U);
    EXPECT_EQ(count(R"({"limit":"5","query":5})"), 10U);
    EXPECT_EQ(count(R"({"limit":3})"), 3U);
    EXPECT_EQ(count(R"({"limit":0})"), 1U);
    EXPECT_EQ(count(R"({"limit":50})"), 20U);
}

TEST_F(NotesToolsTest, Sentences) {
    create("Nákup", "mléko");
    const std::vector<std::array<std::string, 3>> rows{
        {"create", "{}", "Chybí název nebo obsah poznámky."},
        {"create", R"({"title":"a"})", "Chybí název nebo obsah poznámky."},
        {"create", R"({"title":"","body":"b"})", "Chybí název nebo obsah poznámky."},
        {"create", R"({"title":5,"body":"b"})", "Chybí název nebo obsah poznámky."},
        {"create", R"({"title":" ","body":"b"})", "Poznámka musí mít název i obsah."},
        {"update", "{}", "Chybí přesný název poznámky."},
        {"update", R"({"title":"","body":"b"})", "Chybí přesný název poznámky."},
        {"update", R"({"title":"Není"})", "Poznámku s tímto názvem jsem nenašel."},
        {"update", R"({"title":"Nákup","body":""})", "Poznámka musí mít název i obsah."},
        {"update", R"({"title":"Nákup","new_title":" "})", "Poznámka musí mít název i obsah."},
        {"delete", "{}", "Chybí přesný název poznámky."},
        {"delete", R"({"title":"Není"})", "Poznámku s tímto názvem jsem nenašel."},
    };
    for (const auto& [tool, arguments, sentence] : rows) {
        auto outcome = call(tool, arguments);
        EXPECT_FALSE(outcome.ok) << tool << arguments;
        EXPECT_EQ(outcome.result, (boost::json::object{{"error", sentence}})) << tool << arguments;
    }
}

TEST_F(NotesToolsTest, AnUpdateWithNothingNewStillGoesThroughToTheStore) {
    create("Nákup", "mléko");
    EXPECT_TRUE(call("update", R"({"title":"Nákup"})").ok);
    EXPECT_EQ(store.notes()[0].revision, 2U);
}

TEST_F(NotesToolsTest, AFailedSaveIsTheAnswer) {
    breakSaves();
    auto outcome = call("create", R"({"title":"a","body":"b"})");
    EXPECT_FALSE(outcome.ok);
    EXPECT_FALSE(outcome.result["error"].as_string().empty());
}

} // namespace
} // namespace morvex
