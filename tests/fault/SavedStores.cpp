#include "app/agents/HistorieAgentu.h"
#include "tests/fault/SavedFiles.h"
#include "tests/support/AwaitedStores.h"

namespace morvex {

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace notes {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto around = std::make_shared<StoreServices>();
    auto store = std::make_shared<AwaitedNotes>(home, around->clock, around->random);
    return [around, store, text] { return store->vytvorit("Název", text).has_value(); };
}

std::function<bool()> receive(const fs::path& home, const std::string& text) {
    auto around = std::make_shared<StoreServices>();
    auto store = std::make_shared<AwaitedNotes>(home, around->clock, around->random);
    auto now = around->clock.now();
    MorvexNote note{around->random.uuid(), "Název", text, now, now, 1, {}};
    if (!store->vsechny().empty()) note.id = store->vsechny()[0].id, note.revision = 2;
    return [around, store, note] { return store->prijmout(note); };
}

std::function<bool()> remove(const fs::path& home, const std::string&) {
    auto around = std::make_shared<StoreServices>();
    auto store = std::make_shared<AwaitedNotes>(home, around->clock, around->random);
    const bool isDone = store->notes().empty() && !store->vsechny().empty();
    return [around, store, isDone] { return isDone || store->smazat("Název").has_value(); };
}

Texts look(const fs::path& home) {
    StoreServices around;
    Texts texts;
    for (const auto& note : AwaitedNotes(home, around.clock, around.random).vsechny())
        texts.push_back((note.deletedAt ? "deleted " : "") + note.body);
    return texts;
}

} // namespace notes

namespace summaries {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto store = std::make_shared<AwaitedSummaries>(home);
    StoreServices around;
    auto id = around.random.uuid();
    if (!store->summaries().empty()) id = around.random.uuid();
    MorvexSummary summary{id, "Název", text, around.clock.now(), around.clock.now(), around.clock.now(),
                          {}, 1};
    return [store, summary] { return store->prijmout(summary); };
}

Texts look(const fs::path& home) {
    Texts texts;
    for (const auto& summary : AwaitedSummaries(home).summaries()) texts.push_back(summary.body);
    return texts;
}

} // namespace summaries

namespace tasks {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto around = std::make_shared<StoreServices>();
    std::shared_ptr<HistorieAgentu> store = HistorieAgentu::create(home, around->services());
    return [around, store, text] {
        store->zaloz({{}, {}, "codex", "Název", text, "/home"});
        return !store->potiz();
    };
}

std::function<bool()> clear(const fs::path& home, const std::string&) {
    auto around = std::make_shared<StoreServices>();
    std::shared_ptr<HistorieAgentu> store = HistorieAgentu::create(home, around->services());
    return [around, store] {
        store->vymazat();
        return !store->potiz();
    };
}

/// The phone was told of the last task. When no task remains that it was not told of, all are forgotten.
std::function<bool()> confirm(const fs::path& home, const std::string&) {
    auto around = std::make_shared<StoreServices>();
    std::shared_ptr<HistorieAgentu> store = HistorieAgentu::create(home, around->services());
    return [around, store] {
        auto waiting = store->nedorucene();
        if (waiting.empty())
            store->vymazat();
        else
            store->potvrd(waiting[0].workItemID, waiting[0].revize);
        return !store->potiz();
    };
}

Texts look(const fs::path& home) {
    StoreServices around;
    auto store = HistorieAgentu::create(home, around.services());
    Texts texts;
    if (store->potiz()) texts.push_back(store->potiz()->czech());
    for (const auto& task : store->polozky()) texts.push_back(task.instrukce);
    texts.push_back(std::to_string(store->nedorucene().size()));
    return texts;
}

} // namespace tasks

} // namespace

std::vector<SavedFile> filesOfStores() {
    const std::string notesFile = "notes-from-iphone.json";
    const std::string summariesFile = "summaries-from-iphone.json";
    const std::string tasksFile = "agent-tasks.json";
    return {
        {"a note", layByChange<notes::change>, notes::change, notes::look, {notesFile}},
        {"the first note", layNothing, notes::change, notes::look, {notesFile}},
        {"a note of the phone", layByChange<notes::change>, notes::receive, notes::look, {notesFile}},
        {"a deleted note", layByChange<notes::change>, notes::remove, notes::look, {notesFile}},
        {"a summary", layByChange<summaries::change>, summaries::change, summaries::look, {summariesFile}},
        {"the first summary", layNothing, summaries::change, summaries::look, {summariesFile}},
        {"a task", layByChange<tasks::change>, tasks::change, tasks::look, {tasksFile}},
        {"the first task", layNothing, tasks::change, tasks::look, {tasksFile}},
        {"cleared tasks", layByChange<tasks::change>, tasks::clear, tasks::look, {tasksFile}},
        {"a task that was told", layByChange<tasks::change>, tasks::confirm, tasks::look, {tasksFile}},
    };
}

} // namespace morvex
