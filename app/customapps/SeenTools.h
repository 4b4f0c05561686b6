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
    std::string digest; ///< SHA-256 of name, description and schema in canonical form, in base64
    std::string description;
    std::string schema; ///< in canonical form

    /// Of a tool. May take some milliseconds for a large schema.
    static SeenDescription of(const DescribedTool& tool);

    bool operator==(const SeenDescription&) const = default;
};

/// One tool of an app. At least one of the two descriptions is there.
struct SeenTool {
    std::string name;
    std::int64_t ordinal = 1;                  ///< among the tools of this name
    std::optional<SeenDescription> known = {}; ///< absent for a later tool that nobody looked at yet
    std::optional<SeenDescription> news = {};  ///< the last other one, until a person has looked at it
    bool isPast = false;                       ///< the server does not say the news any more
    std::uint64_t lastNamed = 0;               ///< grows with each tool that a list names; not saved

    [[nodiscard]] std::size_t bytes() const;

    bool operator==(const SeenTool& other) const;
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
/// shown until that person has looked, also when the server has taken it back meanwhile. Kept in
/// "Morvex/custom-app-tools.json". Main thread; the file is read once and written on the storage thread. The
/// owner awaits `saved` before it destroys this object.
class SeenTools {
  public:
    struct Room {
        std::size_t tools;
        std::size_t bytes;
    };

    /// What is remembered of one app, and of all, tools that are gone included. Beyond that those are
    /// forgotten that no list of this run of the program has named, or has named longest ago.
    static constexpr Room roomOfApp{512, std::size_t{2} * 1024 * 1024};
    static constexpr Room roomInAll{4'096, std::size_t{8} * 1024 * 1024};
    static constexpr std::size_t mostApps = 512;

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

    /// Forgets an app that does not come back.
    void forget(const std::string& app);

    /// These are the apps at present. Others may come back, as those do that the phone lists: they are
    /// forgotten only when more than `mostApps` are remembered.
    void prefer(const std::vector<std::string>& apps);

    /// Why the last save failed; empty after a successful one.
    [[nodiscard]] const std::optional<Sentence>& problem() const { return problem_; }

    [[nodiscard]] Task<void> saved() { return saves_.settled(); }

    /// Called when news or the problem have changed.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

  private:
    void forgetBeyondAll();
    [[nodiscard]] const SeenApp* find(const std::string& app) const;
    SeenApp& entry(const std::string& app);
    SaveQueue::Save beginSave();
    void endSave(const Result<void>& saved);
    void save();

    RecordFile<SeenToolsArchive> file_;
    SeenToolsArchive archive_;
    std::uint64_t named_ = 0; ///< tools that lists have named so far
    std::optional<Sentence> problem_;
    Signal<> changed_;
    SaveQueue saves_;
};

} // namespace morvex
