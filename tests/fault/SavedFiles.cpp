#include "tests/fault/SavedFiles.h"

#include "app/agents/HistorieAgentu.h"
#include "app/personal/PoznamkyStore.h"
#include "app/personal/SouhrnyStore.h"
#include "platform/linux/FileVault.h"
#include "platform/linux/JsonDefaults.h"
#include "platform/linux/VaultRules.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedUrlOpener.h"
#include "shared/base/Require.h"

#include <fstream>
#include <sstream>

namespace morvex {

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace settings {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto defaults = std::make_shared<JsonDefaults>(JsonDefaults::load(home));
    return [defaults, text] {
        defaults->set("text", text);
        return !defaults->problem();
    };
}

Texts look(const fs::path& home) {
    auto defaults = JsonDefaults::load(home);
    return {defaults.text("text").value_or("none"), defaults.problem().value_or("")};
}

} // namespace settings

namespace secret {

constexpr auto service = "služba";
constexpr auto account = "účet";

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto vault = std::make_shared<FileVault>(home);
    return [vault, text] {
        if (vault->update(service, account, asBytes(text)) == vaultStatus::ok) return true;
        return vault->add(service, account, asBytes(text)) == vaultStatus::ok;
    };
}

Texts look(const fs::path& home) {
    auto [status, bytes] = FileVault(home).find(service, account);
    return {std::to_string(status), std::string(asText(bytes))};
}

} // namespace secret

namespace notes {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto around = std::make_shared<Surroundings>();
    auto store = std::make_shared<PoznamkyStore>(PoznamkyStore::load(home, around->clock, around->random));
    return [around, store, text] { return store->vytvorit("Název", text).has_value(); };
}

std::function<bool()> receive(const fs::path& home, const std::string& text) {
    auto around = std::make_shared<Surroundings>();
    auto store = std::make_shared<PoznamkyStore>(PoznamkyStore::load(home, around->clock, around->random));
    auto now = around->clock.now();
    MorvexNote note{around->random.uuid(), "Název", text, now, now, 1, {}};
    if (!store->vsechny().empty()) note.id = store->vsechny()[0].id, note.revision = 2;
    return [around, store, note] { return store->prijmout(note); };
}

Texts look(const fs::path& home) {
    Surroundings around;
    Texts texts;
    for (const auto& note : PoznamkyStore::load(home, around.clock, around.random).vsechny())
        texts.push_back(note.body);
    return texts;
}

} // namespace notes

namespace summaries {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto store = std::make_shared<SouhrnyStore>(SouhrnyStore::load(home));
    Surroundings around;
    auto id = around.random.uuid();
    if (!store->summaries().empty()) id = around.random.uuid();
    MorvexSummary summary{id, "Název", text, around.clock.now(), around.clock.now(), around.clock.now(),
                          {}, 1};
    return [store, summary] { return store->prijmout(summary); };
}

Texts look(const fs::path& home) {
    Texts texts;
    for (const auto& summary : SouhrnyStore::load(home).summaries()) texts.push_back(summary.body);
    return texts;
}

} // namespace summaries

namespace tasks {

std::function<bool()> change(const fs::path& home, const std::string& text) {
    auto around = std::make_shared<Surroundings>();
    std::shared_ptr<HistorieAgentu> store =
        HistorieAgentu::create(home, {around->clock, around->random, around->opener});
    return [around, store, text] {
        store->zaloz({{}, {}, "codex", "Název", text, "/home"});
        return !store->potiz();
    };
}

Texts look(const fs::path& home) {
    Surroundings around;
    auto store = HistorieAgentu::create(home, {around.clock, around.random, around.opener});
    Texts texts{store->potiz().value_or("")};
    for (const auto& task : store->polozky()) texts.push_back(task.instrukce);
    return texts;
}

} // namespace tasks

namespace damaged {

/// Beside the file, what is in it.
constexpr auto copyName = "copy";

void lay(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    for (const auto& path : {file, file.parent_path() / copyName}) std::ofstream(path) << "{" << text;
}

std::string contentOf(const fs::path& file) {
    std::stringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

void laySettings(const fs::path& home, const std::string& text) {
    lay(home / "Morvex/defaults.json", text);
}

void layNotes(const fs::path& home, const std::string& text) {
    lay(home / "Morvex/notes-from-iphone.json", text);
}

/// Whether the damaged file is still there as it was, under whatever name.
std::string whatIsLeft(const fs::path& home) {
    const auto copy = contentOf(home / "Morvex" / copyName);
    for (const auto& entry : fs::directory_iterator(home / "Morvex"))
        if (entry.path().filename() != copyName && contentOf(entry.path()) == copy) return "kept";
    return "lost";
}

/// The settings set a damaged file aside when they load, which is a part of the work here.
std::function<bool()> changeSettings(const fs::path& home, const std::string& text) {
    return [home, text] {
        auto defaults = JsonDefaults::load(home);
        defaults.set("text", text);
        return defaults.text("text") == text && JsonDefaults::load(home).text("text") == text;
    };
}

Texts lookForSettings(const fs::path& home) {
    return {JsonDefaults::load(home).text("text").value_or("none"), whatIsLeft(home)};
}

Texts lookForNotes(const fs::path& home) {
    auto texts = notes::look(home);
    texts.push_back(whatIsLeft(home));
    return texts;
}

} // namespace damaged

} // namespace

std::vector<SavedFile> savedFiles() {
    std::vector<SavedFile> all;
    for (const auto& files : {filesOfTheCompanion(), filesOfSettings(), filesOfPhoneAndRelay()})
        all.insert(all.end(), files.begin(), files.end());
    return all;
}

std::vector<SavedFile> filesOfTheCompanion() {
    const std::string notesFile = "notes-from-iphone.json";
    return {
        {"settings", layByChange<settings::change>, settings::change, settings::look, {"defaults.json"}},
        {"the first settings", layNothing, settings::change, settings::look, {"defaults.json"}},
        {"a secret",
         layByChange<secret::change>,
         secret::change,
         secret::look,
         {"%C3%BA%C4%8Det"},
         vaultRules::itemLimit},
        {"the first secret",
         layNothing,
         secret::change,
         secret::look,
         {"%C3%BA%C4%8Det"},
         vaultRules::itemLimit},
        {"a note", layByChange<notes::change>, notes::change, notes::look, {notesFile}},
        {"the first note", layNothing, notes::change, notes::look, {notesFile}},
        {"a note of the phone", layByChange<notes::change>, notes::receive, notes::look, {notesFile}},
        {"settings over damaged ones",
         damaged::laySettings,
         damaged::changeSettings,
         damaged::lookForSettings,
         {"defaults.json", "defaults.json.damaged", "defaults.json.damaged-2", damaged::copyName}},
        {"a note over damaged ones",
         damaged::layNotes,
         notes::change,
         damaged::lookForNotes,
         {notesFile, notesFile + ".damaged", notesFile + ".damaged-2", damaged::copyName}},
        {"a summary",
         layByChange<summaries::change>,
         summaries::change,
         summaries::look,
         {"summaries-from-iphone.json"}},
        {"a task", layByChange<tasks::change>, tasks::change, tasks::look, {"agent-tasks.json"}},
        {"the first task", layNothing, tasks::change, tasks::look, {"agent-tasks.json"}},
    };
}

} // namespace morvex
