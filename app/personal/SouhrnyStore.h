#pragma once

#include "app/personal/SummariesArchive.h"
#include "foundation/archive/RecordFile.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// The summaries that the phone has written, for reading, in "Morvex/summaries-from-iphone.json". Nothing is
/// made, changed or deleted here. Main thread; the file is read once and written at every change.
class SouhrnyStore {
  public:
    static SouhrnyStore load(const std::filesystem::path& applicationSupport);

    /// All of them, the newest first.
    [[nodiscard]] const std::vector<MorvexSummary>& summaries() const { return archive_.summaries.records; }

    /// Why the last summary could not be saved; nothing after a save that worked.
    [[nodiscard]] const std::optional<std::string>& problem() const { return problem_; }

    /// Merges a summary: only a higher revision replaces the stored one. True when the phone may be told that
    /// it was taken, also for one that does not count any more; false when it could not be saved, and then
    /// nothing has changed.
    bool prijmout(MorvexSummary summary);

    /// For views: `summaries()` or `problem()` is another one than before.
    std::function<void()> onChange;

  private:
    explicit SouhrnyStore(RecordFile<SummariesArchive> soubor) : soubor_(std::move(soubor)) {}

    RecordFile<SummariesArchive> soubor_;
    SummariesArchive archive_;
    std::optional<std::string> problem_;
};

} // namespace morvex
