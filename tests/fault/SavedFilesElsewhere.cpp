#include "phone/PhoneRecords.h"
#include "phone/PhoneTasks.h"
#include "platform/linux/XdgAutostart.h"
#include "relay/PairStore.h"
#include "shared/trust/DeviceIdentity.h"
#include "tests/fault/SavedFiles.h"

#include <fstream>
#include <sstream>

namespace morvex {

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace phone {

/// The phone's archive, and the objects that it needs.
std::pair<std::shared_ptr<StoreServices>, std::shared_ptr<PhoneRecords>> open(const fs::path& home) {
    auto around = std::make_shared<StoreServices>();
    return {around, std::make_shared<PhoneRecords>(PhoneRecords::load(home, around->clock, around->random))};
}

std::function<bool()> note(const fs::path& home, const std::string& text) {
    auto [around, records] = open(home);
    return [around, records, text] { return records->create("Název", text).has_value(); };
}

std::function<bool()> summarize(const fs::path& home, const std::string& text) {
    auto [around, records] = open(home);
    return [around, records, text] { return records->summarize("Název", text, {}).has_value(); };
}

Texts look(const fs::path& home) {
    auto [around, records] = open(home);
    Texts texts;
    for (const auto& note : records->notes()) texts.push_back(note.body);
    for (const auto& summary : records->summaries()) texts.push_back(summary.body);
    return texts;
}

std::function<bool()> task(const fs::path& home, const std::string& text) {
    auto tasks = std::make_shared<PhoneTasks>(PhoneTasks::load(home));
    WorkItem item;
    item.title = text;
    item.revision = tasks->items().size() + 1;
    return [tasks, item] { return tasks->take(item).has_value(); };
}

Texts lookForTasks(const fs::path& home) {
    Texts texts;
    for (const auto& item : PhoneTasks::load(home).items()) texts.push_back(item.title);
    return texts;
}

} // namespace phone

namespace autostart {

constexpr std::size_t longestPath = 20'000;

std::function<bool()> change(const fs::path& home, const std::string& text) {
    return [home, text] { return XdgAutostart(home, "/opt/" + text).enroll().has_value(); };
}

std::function<bool()> withdraw(const fs::path& home, const std::string& text) {
    return [home, text] { return XdgAutostart(home, "/opt/" + text).withdraw().has_value(); };
}

Texts look(const fs::path& home) {
    std::stringstream entry;
    entry << std::ifstream(home / "autostart/morvex.desktop").rdbuf();
    return {XdgAutostart(home, "/opt/morvex").isEnabled() ? "on" : "off", entry.str()};
}

} // namespace autostart

namespace database {

const PairID pair{"PAIR"};
/// Some tens of pages; more would be written in the same way.
constexpr std::size_t longestName = 100'000;

/// A device with a long name, so that a member takes several pages.
Member memberOf(const std::string& text, DeviceRole role) {
    static const auto key = DeviceIdentity::generate().signingKey();
    return {DeviceID{text}, key, role};
}

fs::path fileOf(const fs::path& home) {
    return home / "relay.sqlite";
}

/// Creates the pair, in an existing or a new database.
std::function<bool()> create(const fs::path& home, const std::string& text) {
    return [home, text] {
        auto store = PairStore::open(fileOf(home));
        if (!store) return false;
        const auto known = store->find(pair);
        if (!known || *known) return known.has_value();
        return store->create(pair, memberOf(text, DeviceRole::mac), {}, dateFromSeconds(1)).has_value();
    };
}

/// A change of a database, if it can be opened.
std::function<bool()> changed(const fs::path& home, const std::function<bool(PairStore&)>& change) {
    auto opened = PairStore::open(fileOf(home));
    if (!opened) return [] { return false; };
    auto store = std::make_shared<PairStore>(*std::move(opened));
    return [store, change] { return change(*store); };
}

std::function<bool()> join(const fs::path& home, const std::string& text) {
    return changed(home, [text](PairStore& store) {
        return store.join(pair, memberOf(text, DeviceRole::phone)).has_value();
    });
}

std::function<bool()> revoke(const fs::path& home, const std::string&) {
    return changed(home, [](PairStore& store) { return store.revoke(pair, dateFromSeconds(2)).has_value(); });
}

Texts look(const fs::path& home) {
    auto store = PairStore::open(fileOf(home));
    if (!store) return {store.error().popis().czech()};
    const auto found = store->find(pair);
    if (!found) return {found.error().popis().czech()};
    Texts texts;
    if (*found && (*found)->isRevoked) texts.emplace_back("revoked");
    if (*found)
        for (const auto& member : (*found)->members) texts.push_back(member.device.rawValue);
    return texts;
}

} // namespace database

} // namespace

std::vector<SavedFile> filesOfPhoneAndRelay() {
    return {
        {"a note on the phone", layByChange<phone::note>, phone::note, phone::look, {"records.json"}},
        {"the first note on the phone", layNothing, phone::note, phone::look, {"records.json"}},
        {"a summary on the phone", layByChange<phone::note>, phone::summarize, phone::look, {"records.json"}},
        {"a task on the phone", layByChange<phone::task>, phone::task, phone::lookForTasks, {"tasks.json"}},
        {"the first task on the phone", layNothing, phone::task, phone::lookForTasks, {"tasks.json"}},
        {"the start at login",
         layNothing,
         autostart::change,
         autostart::look,
         {"morvex.desktop"},
         autostart::longestPath},
        {"another start at login",
         layByChange<autostart::change>,
         autostart::change,
         autostart::look,
         {"morvex.desktop"},
         autostart::longestPath},
        {"no start at login any more",
         layByChange<autostart::change>,
         autostart::withdraw,
         autostart::look,
         {"morvex.desktop"},
         autostart::longestPath},
        {"the first pair of a relay",
         layNothing,
         database::create,
         database::look,
         {"relay.sqlite"},
         database::longestName,
         false},
        {"the second device of a pair",
         layByChange<database::create>,
         database::join,
         database::look,
         {"relay.sqlite"},
         database::longestName,
         false},
        {"a revoked pair",
         layByChange<database::create>,
         database::revoke,
         database::look,
         {"relay.sqlite"},
         database::longestName,
         false},
    };
}

} // namespace morvex
