#include "app/customapps/SeenTools.h"

#include "shared/base/Base64.h"
#include "shared/trust/Crypto.h"
#include "shared/wire/CanonicalJson.h"
#include "shared/wire/Describe.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace morvex {

void describe(auto& io, Is<SeenDescription> auto& seen) {
    io.required("digest", seen.digest);
    io.required("description", seen.description);
    io.required("schema", seen.schema);
}

void describe(auto& io, Is<SeenTool> auto& tool) {
    io.required("name", tool.name);
    io.required("ordinal", tool.ordinal);
    io.optional("known", tool.known);
    io.optional("news", tool.news);
    io.required("isPast", tool.isPast);
}

void describe(auto& io, Is<SeenApp> auto& app) {
    io.required("id", app.id);
    io.required("holdsChanges", app.holdsChanges);
    io.required("isListed", app.isListed);
    io.required("tools", app.tools);
}

void describe(auto& io, Is<SeenToolsArchive> auto& archive) {
    io.required("schemaVersion", archive.schemaVersion);
    io.required("apps", archive.apps);
}

template struct Codec<SeenToolsArchive>;

namespace {

/// Each part follows its length, so that no two tools have the same bytes.
void add(std::string& text, const std::string& part) {
    text.append(std::to_string(part.size())).append(":").append(part);
}

using Key = std::pair<std::string, std::int64_t>; ///< name and ordinal

/// A tool for each of the list, in its order.
std::vector<Key> keysOf(const std::vector<NamedDescription>& tools) {
    std::map<std::string, std::int64_t> counts;
    std::vector<Key> keys;
    keys.reserve(tools.size());
    for (const auto& tool : tools) keys.emplace_back(tool.name, ++counts[tool.name]);
    return keys;
}

bool isKnown(const SeenTool& tool, const SeenDescription& described) {
    return tool.known && tool.known->digest == described.digest;
}

void note(SeenTool& tool, const SeenDescription& described) {
    tool.isPast = isKnown(tool, described) && tool.news;
    if (!isKnown(tool, described)) tool.news = described;
}

/// Those stay that were named last.
void keepWithin(SeenTools::Room room, std::vector<SeenApp*> apps) {
    std::vector<const SeenTool*> tools;
    for (const auto* app : apps)
        for (const auto& tool : app->tools) tools.push_back(&tool);
    std::ranges::sort(tools, std::ranges::greater(), &SeenTool::lastNamed);
    std::size_t bytes = 0;
    const auto beyond =
        std::ranges::find_if(tools, [&, count = std::size_t{0}](const SeenTool* tool) mutable {
            bytes += tool->bytes();
            return ++count > room.tools || bytes > room.bytes;
        });
    if (beyond == tools.end()) return;
    const auto youngestGone = (*beyond)->lastNamed;
    for (auto* app : apps)
        std::erase_if(app->tools, [&](const SeenTool& tool) { return tool.lastNamed <= youngestGone; });
}

} // namespace

SeenDescription SeenDescription::of(const DescribedTool& tool) {
    const auto schema = canonicalJson(tool.schema);
    std::string all;
    add(all, tool.name);
    add(all, tool.description);
    add(all, schema);
    return {base64Encode(sha256(asBytes(all))), tool.description, schema};
}

std::size_t SeenTool::bytes() const {
    constexpr std::size_t ownBytes = 200;
    std::size_t bytes = name.size() + ownBytes;
    for (const auto* seen : {&known, &news})
        if (*seen) bytes += (*seen)->description.size() + (*seen)->schema.size();
    return bytes;
}

bool SeenTool::operator==(const SeenTool& other) const {
    const auto saved = [](const SeenTool& tool) {
        return std::tie(tool.name, tool.ordinal, tool.known, tool.news, tool.isPast);
    };
    return saved(*this) == saved(other);
}

SeenTools::SeenTools(const std::filesystem::path& applicationSupport, Saving saving)
    : file_(applicationSupport / "Morvex" / "custom-app-tools.json"),
      archive_(file_.load()),
      saves_(saving,
             {[this] { return beginSave(); }, [this](const Result<void>& saved) { endSave(saved); }}) {
    for (auto& app : archive_.apps)
        for (auto& tool : app.tools) tool.lastNamed = ++named_;
}

std::vector<bool> SeenTools::compare(const std::string& id, const std::vector<NamedDescription>& tools) {
    const auto keys = keysOf(tools);
    const auto* before = find(id);
    auto app = before ? *before : SeenApp{.id = id};
    std::map<Key, std::size_t> places;
    for (std::size_t i = 0; i < app.tools.size(); ++i) {
        auto& tool = app.tools[i];
        places.emplace(Key(tool.name, tool.ordinal), i);
        tool.isPast = tool.news.has_value(); // until this list names it
    }
    std::vector<bool> offered;
    named_ += tools.size();
    for (std::size_t i = 0; i < tools.size(); ++i) {
        const auto [place, isNew] = places.emplace(keys[i], app.tools.size());
        if (isNew) app.tools.push_back({.name = keys[i].first, .ordinal = keys[i].second});
        auto& tool = app.tools[place->second];
        if (isNew && !app.isListed) tool.known = tools[i].seen;
        note(tool, tools[i].seen);
        tool.lastNamed = named_ - i; // of one list the first ones stay
        offered.push_back(!app.holdsChanges || isKnown(tool, tools[i].seen));
    }
    app.isListed = true;
    keepWithin(roomOfApp, {&app});
    const bool isOther = !before || app != *before;
    entry(id) = std::move(app);
    if (isOther) {
        forgetBeyondAll();
        save();
    }
    return offered;
}

void SeenTools::forgetBeyondAll() {
    std::vector<SeenApp*> apps;
    for (auto& app : archive_.apps) apps.push_back(&app);
    keepWithin(roomInAll, std::move(apps));
}

std::vector<SeenTool> SeenTools::news(const std::string& app) const {
    std::vector<SeenTool> news;
    if (const auto* seen = find(app))
        std::ranges::copy_if(seen->tools, std::back_inserter(news),
                             [](const SeenTool& tool) { return tool.news.has_value(); });
    return news;
}

std::size_t SeenTools::countNews(const std::string& app) const {
    const auto* seen = find(app);
    return seen ? static_cast<std::size_t>(std::ranges::count_if(
                      seen->tools, [](const SeenTool& tool) { return tool.news.has_value(); }))
                : 0;
}

void SeenTools::looked(const std::string& app, const std::vector<SeenTool>& shown) {
    if (!find(app)) return;
    auto& tools = entry(app).tools;
    for (auto& tool : tools) {
        if (!tool.news || std::ranges::count(shown, tool) == 0) continue;
        auto news = std::exchange(tool.news, std::nullopt);
        if (!std::exchange(tool.isPast, false)) tool.known = std::move(news);
    }
    std::erase_if(tools, [](const SeenTool& tool) { return !tool.known && !tool.news; });
    save();
}

bool SeenTools::holdsChanges(const std::string& app) const {
    const auto* seen = find(app);
    return seen && seen->holdsChanges;
}

void SeenTools::setHoldsChanges(const std::string& app, bool holds) {
    if (holdsChanges(app) == holds) return;
    entry(app).holdsChanges = holds;
    save();
}

void SeenTools::forget(const std::string& app) {
    if (std::erase_if(archive_.apps, [&app](const SeenApp& seen) { return seen.id == app; }) > 0) save();
}

void SeenTools::prefer(const std::vector<std::string>& apps) {
    if (archive_.apps.size() <= mostApps) return;
    const std::set<std::string> present(apps.begin(), apps.end());
    if (std::erase_if(archive_.apps, [&](const SeenApp& app) { return !present.contains(app.id); }) > 0)
        save();
}

const SeenApp* SeenTools::find(const std::string& app) const {
    const auto place = std::ranges::find(archive_.apps, app, &SeenApp::id);
    return place == archive_.apps.end() ? nullptr : &*place;
}

SeenApp& SeenTools::entry(const std::string& app) {
    const auto place = std::ranges::find(archive_.apps, app, &SeenApp::id);
    return place == archive_.apps.end() ? archive_.apps.emplace_back(SeenApp{.id = app}) : *place;
}

void SeenTools::save() {
    saves_.request(0);
    changed_.tell();
}

SaveQueue::Save SeenTools::beginSave() {
    std::size_t bytes = 0;
    for (const auto& app : archive_.apps)
        for (const auto& tool : app.tools) bytes += tool.bytes();
    return {bytes, [this, archive = archive_] { return file_.save(archive); }};
}

void SeenTools::endSave(const Result<void>& saved) {
    auto problem = saved ? std::nullopt : std::optional(saved.error().popis());
    if (std::exchange(problem_, problem) != problem) changed_.tell();
}

} // namespace morvex
