#pragma once

#include "app/personal/SummariesArchive.h"
#include "foundation/SaveQueue.h"
#include "foundation/Signal.h"
#include "foundation/archive/RecordFile.h"
#include "foundation/archive/RecordsAhead.h"
#include "shared/base/Sentence.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace morvex {

/// The summaries that the phone has written, in "Morvex/summaries-from-iphone.json". This computer only reads
/// them. Main thread; the file is read once and written on the storage thread, with rapid changes written
/// together. The owner awaits `saved` before it destroys the store.
class SouhrnyStore {
  public:
    /// Reads the file.
    SouhrnyStore(const std::filesystem::path& applicationSupport, Saving saving);

    /// All summaries that are on the disk, newest first.
    [[nodiscard]] const std::vector<MorvexSummary>& summaries() const { return summaries_; }

    /// Why the last summary could not be saved; empty after a successful save.
    [[nodiscard]] const std::optional<Sentence>& problem() const { return problem_; }

    /// Merges a summary at once: only a higher revision replaces the stored one. The task waits for the save.
    /// Returns true if the phone may be told that the summary was taken, even if a newer version already
    /// replaces it; false if it, or the version that replaces it, could not be saved; the change is then
    /// undone.
    Task<bool> prijmout(MorvexSummary summary);

    /// Starts a waiting save now instead of collecting more summaries.
    void hurry() { saves_.hurry(); }

    /// The same; resumes when all saves requested so far have ended.
    Task<void> saved() { return saves_.settled(); }

    /// For views: called when `summaries()` or `problem()` has changed.
    [[nodiscard]] Connection onChange(std::function<void()> callback) {
        return onChange_.connect(std::move(callback));
    }

  private:
    using Records = RecordsAhead<MorvexSummary>;

    SaveQueue::Save startSaving();
    void finishSaving(const Result<void>& saved);

    RecordFile<SummariesArchive> soubor_;
    Records records_;
    Records::List beingSaved_; ///< what the running save writes
    std::vector<MorvexSummary> summaries_;
    Signal<> onChange_;
    std::optional<Sentence> problem_;
    SaveQueue saves_;
};

} // namespace morvex
