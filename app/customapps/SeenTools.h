#pragma once

#include "foundation/SaveQueue.h"
#include "foundation/Signal.h"
#include "foundation/archive/RecordFile.h"
#include "shared/base/Sentence.h"
#include "shared/wire/Codec.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// How a server describes one of its tools.
struct DescribedTool {
    std::string name;
    std::string description;
    std::string schema; ///< JSON text
};

/// A description that was seen once.
struct SeenDescription {
    std::string digest;      ///< SHA-256 of name, description and schema in canonical form, in base64
    std::string description; ///< the beginning of it
    std::string schema;      ///< the beginning of its canonical form

    /// Of a tool. May take some milliseconds for a large schema.
    static SeenDescription of(const DescribedTool& tool);

    bool operator==(const SeenDescription&) const = default;
};

/// One tool of an app. At least one of the two descriptions is there.
struct SeenTool {
    std::string name;
    std::optional<SeenDescription> known; ///< absent for a tool that came later and was not looked at yet
    std::optional<SeenDescription> news;  ///< what the server says now, where a person has not looked at it

    bool operator==(const SeenTool&) const = default;
};

/// What a server says of a tool now.
struct NamedDescription {
    std::string name;
    SeenDescription seen;
};

struct SeenApp {
    std::string id;
    bool holdsChanges = false; ///< changed and new tools wait until a person has looked
    bool isListed = false;     ///< its tools were seen at least once
    std::vector<SeenTool> tools{};

    bool operator==(const SeenApp&) const = default;
};

struct SeenToolsArchive {
    std::int64_t schemaVersion = 1;
    std::vector<SeenApp> apps;

    bool operator==(const SeenToolsArchive&) const = default;
};

extern template struct Codec<SeenToolsArchive>;

/// What the tools of the custom apps said of themselves when they were seen for the first time, and what has
/// changed since. A server may show harmless tools to the person who adds it and others later; so a change is
/// shown until that person has looked. Kept in "Morvex/custom-app-tools.json". Main thread; the file is read
/// once and written on the storage thread. The owner awaits `saved` before it destroys this object.
class SeenTools {
  public:
    /// Tools of one app, and of all, that are remembered, those that are gone included. Beyond that those are
    /// forgotten that no list of this run of the program has named, or has named longest ago.
    static constexpr std::size_t mostOfApp = 512;
    static constexpr std::size_t mostInAll = 4'096;
    /// Bytes of a description, and of a schema, that are kept to be shown.
    static constexpr std::size_t mostShown = 2'000;

    /// Reads the file.
    SeenTools(const std::filesystem::path& applicationSupport, Saving saving);

    /// Compares what a server offers with what was seen before. Returns for each tool, in their order,
    /// whether it may be offered. The first list of an app is taken as it is. Tools of the same name are told
    /// apart by their order.
    std::vector<bool> compare(const std::string& app, const std::vector<NamedDescription>& tools);

    /// The tools of the app with news, in the order in which they were seen.
    [[nodiscard]] std::vector<SeenTool> news(const std::string& app) const;

    /// How many these are.
    [[nodiscard]] std::size_t countNews(const std::string& app) const;

    /// A person has looked at these news of the app. What has changed again meanwhile stays news.
    void looked(const std::string& app, const std::vector<SeenTool>& shown);

    [[nodiscard]] bool holdsChanges(const std::string& app) const;
    void setHoldsChanges(const std::string& app, bool holds);

    /// Forgets all apps but these.
    void keepOnly(const std::vector<std::string>& apps);

    /// Why the last save failed; empty after a successful one.
    [[nodiscard]] const std::optional<Sentence>& problem() const { return problem_; }

    [[nodiscard]] Task<void> saved() { return saves_.settled(); }

    /// Called when news or the problem have changed.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

  private:
    using Place = std::pair<std::string, std::string>; ///< an app and the name of a tool

    void forgetBeyond(SeenApp& app);
    void forgetBeyondAll();
    [[nodiscard]] std::uint64_t lastNamed(const std::string& app, const std::string& tool) const;
    [[nodiscard]] const SeenApp* find(const std::string& app) const;
    SeenApp& entry(const std::string& app);
    SaveQueue::Save beginSave();
    void endSave(const Result<void>& saved);
    void save();

    RecordFile<SeenToolsArchive> file_;
    SeenToolsArchive archive_;
    std::uint64_t lists_ = 0;                ///< that were compared so far
    std::map<Place, std::uint64_t> namedBy_; ///< the last list that named a tool
    std::optional<Sentence> problem_;
    Signal<> changed_;
    SaveQueue saves_;
};

} // namespace morvex
