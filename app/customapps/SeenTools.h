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
#include <optional>
#include <string>
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
    std::string description; ///< the first characters of it
    std::string schema;      ///< the first characters of its canonical form

    bool operator==(const SeenDescription&) const = default;
};

/// One tool of an app. At least one of the two descriptions is there.
struct SeenTool {
    std::string name;
    std::optional<SeenDescription> known; ///< absent for a tool that came later and was not looked at yet
    std::optional<SeenDescription> news;  ///< what the server says now, where a person has not looked at it

    bool operator==(const SeenTool&) const = default;
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
    /// Tools of one app that are remembered, those that are gone included. Those that are gone are forgotten
    /// first, in the order in which they were seen.
    static constexpr std::size_t mostTools = 512;
    /// Characters of a description, and of a schema, that are kept to be shown.
    static constexpr std::size_t mostShown = 2'000;

    /// Reads the file.
    SeenTools(const std::filesystem::path& applicationSupport, Saving saving);

    /// Compares what a server offers with what was seen before. Returns for each tool, in their order,
    /// whether it may be offered. The first list of an app is taken as it is. Tools of the same name are told
    /// apart by their order.
    std::vector<bool> compare(const std::string& app, const std::vector<DescribedTool>& tools);

    /// The tools of the app with news, in the order in which they were seen.
    [[nodiscard]] std::vector<SeenTool> news(const std::string& app) const;

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
    [[nodiscard]] const SeenApp* find(const std::string& app) const;
    SeenApp& entry(const std::string& app);
    SaveQueue::Save beginSave();
    void endSave(const Result<void>& saved);
    void save();

    RecordFile<SeenToolsArchive> file_;
    SeenToolsArchive archive_;
    std::optional<Sentence> problem_;
    Signal<> changed_;
    SaveQueue saves_;
};

} // namespace morvex
