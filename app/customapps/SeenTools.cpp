#include "app/customapps/SeenTools.h"

#include "shared/base/Base64.h"
#include "shared/base/Utf8.h"
#include "shared/trust/Crypto.h"
#include "shared/wire/CanonicalJson.h"
#include "shared/wire/Describe.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace morvex {

void describe(auto& io, Is<SeenDescription> auto& seen) {
    io.required("digest", seen.digest);
    io.required("description", seen.description);
    io.required("schema", seen.schema);
}

void describe(auto& io, Is<SeenTool> auto& tool) {
    io.required("name", tool.name);
    io.optional("known", tool.known);
    io.optional("news", tool.news);
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

/// The names of the tools; a name that comes again gets its number.
std::vector<std::string> distinctNames(const std::vector<NamedDescription>& tools) {
    std::map<std::string, int> counts;
    std::vector<std::string> names;
    names.reserve(tools.size());
    for (const auto& tool : tools) {
        const auto& name = tool.name;
        const int count = ++counts[name];
        names.push_back(count == 1 ? name : name + '\n' + std::to_string(count));
    }
    return names;
}

void note(SeenTool& tool, SeenDescription described) {
    if (tool.known && tool.known->digest == described.digest)
        tool.news.reset();
    else
        tool.news = std::move(described);
}

/// A tool that is gone has no news. If it was never looked at, it is new when it returns.
void dropNewsOfGone(std::vector<SeenTool>& tools, const std::map<std::string, std::size_t>& present) {
    std::erase_if(tools,
                  [&present](const SeenTool& tool) { return !tool.known && !present.contains(tool.name); });
    for (auto& tool : tools)
        if (!present.contains(tool.name)) tool.news.reset();
}

} // namespace

SeenDescription SeenDescription::of(const DescribedTool& tool) {
    const auto schema = canonicalJson(tool.schema);
    std::string all;
    add(all, tool.name);
    add(all, tool.description);
    add(all, schema);
    return {base64Encode(sha256(asBytes(all))), firstBytes(tool.description, SeenTools::mostShown),
            firstBytes(schema, SeenTools::mostShown)};
}

SeenTools::SeenTools(const std::filesystem::path& applicationSupport, Saving saving)
    : file_(applicationSupport / "Morvex" / "custom-app-tools.json"),
      archive_(file_.load()),
      saves_(saving,
             {[this] { return beginSave(); }, [this](const Result<void>& saved) { endSave(saved); }}) {}

std::vector<bool> SeenTools::compare(const std::string& id, const std::vector<NamedDescription>& tools) {
    ++lists_;
    const auto names = distinctNames(tools);
    auto app = find(id) ? *find(id) : SeenApp{.id = id};
    std::map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < app.tools.size(); ++i) places.emplace(app.tools[i].name, i);
    std::map<std::string, std::size_t> present;
    for (std::size_t i = 0; i < tools.size(); ++i) {
        present.emplace(names[i], i);
        namedBy_[{id, names[i]}] = lists_;
        auto described = tools[i].seen;
        if (const auto place = places.find(names[i]); place != places.end())
            note(app.tools[place->second], std::move(described));
        else if (app.isListed)
            app.tools.push_back({names[i], std::nullopt, std::move(described)});
        else
            app.tools.push_back({names[i], std::move(described), std::nullopt});
    }
    app.isListed = true;
    dropNewsOfGone(app.tools, present);
    forgetBeyond(app);

    std::vector<bool> offered(tools.size(), true);
    if (app.holdsChanges)
        for (const auto& tool : app.tools)
            if (tool.news) offered[present.at(tool.name)] = false;
    if (!find(id) || app != *find(id)) {
        entry(id) = std::move(app);
        forgetBeyondAll();
        save();
    }
    return offered;
}

std::uint64_t SeenTools::lastNamed(const std::string& app, const std::string& tool) const {
    const auto list = namedBy_.find({app, tool});
    return list == namedBy_.end() ? 0 : list->second;
}

void SeenTools::forgetBeyond(SeenApp& app) {
    const auto age = [&](const SeenTool& tool) { return lastNamed(app.id, tool.name); };
    while (app.tools.size() > mostOfApp) app.tools.erase(std::ranges::min_element(app.tools, {}, age));
}

void SeenTools::forgetBeyondAll() {
    std::vector<std::uint64_t> ages;
    for (const auto& app : archive_.apps)
        for (const auto& tool : app.tools) ages.push_back(lastNamed(app.id, tool.name));
    if (ages.size() <= mostInAll) return;
    auto surplus = ages.size() - mostInAll;
    std::ranges::nth_element(ages, ages.begin() + static_cast<std::ptrdiff_t>(surplus));
    const auto youngestGone = ages[surplus];
    for (auto& app : archive_.apps)
        std::erase_if(app.tools, [&](const SeenTool& tool) {
            const bool goes = surplus > 0 && lastNamed(app.id, tool.name) <= youngestGone;
            if (goes) --surplus;
            return goes;
        });
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
    for (auto& tool : entry(app).tools)
        if (tool.news && std::ranges::count(shown, tool) != 0)
            tool.known = std::exchange(tool.news, std::nullopt);
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

void SeenTools::keepOnly(const std::vector<std::string>& apps) {
    const auto gone = std::erase_if(
        archive_.apps, [&apps](const SeenApp& app) { return std::ranges::find(apps, app.id) == apps.end(); });
    if (gone > 0) save();
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
    // Saved without waiting for more, since it changes only when the tools of a server do.
    constexpr std::size_t small = 0;
    return {small, [this, archive = archive_] { return file_.save(archive); }};
}

void SeenTools::endSave(const Result<void>& saved) {
    auto problem = saved ? std::nullopt : std::optional(saved.error().popis());
    if (std::exchange(problem_, problem) != problem) changed_.tell();
}

} // namespace morvex
