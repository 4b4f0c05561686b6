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

/// The summaries that the phone has written, for reading, in "Morvex/summaries-from-iphone.json". Nothing is
/// made, changed or deleted here. Main thread; the file is read once and written on the storage thread,
/// several summaries at once when they come fast. The owner awaits `ulozeno` before the store goes.
class SouhrnyStore {
  public:
    /// Reads the file.
    SouhrnyStore(const std::filesystem::path& applicationSupport, Saving saving);

    /// All that are on the disk, the newest first.
    [[nodiscard]] const std::vector<MorvexSummary>& summaries() const { return summaries_; }

    /// Why the last summary could not be saved; nothing after a save that worked.
    [[nodiscard]] const std::optional<Sentence>& problem() const { return problem_; }

    /// Merges a summary at once: only a higher revision replaces the stored one. The task waits for the save.
    /// True when the phone may be told that it was taken, also for one that does not count any more; false
    /// when it, or the one that counts instead, could not be saved, and then it is put back.
    Task<bool> prijmout(MorvexSummary summary);

    /// Lets nothing wait for more summaries any longer.
    void spechat() { saves_.hurry(); }

    /// The same, and resumes when the saves that were asked for until now have ended.
    Task<void> ulozeno() { return saves_.settled(); }

    /// For views: `summaries()` or `problem()` is another one than before.
    [[nodiscard]] Connection onChange(std::function<void()> zavolat) {
        return onChange_.connect(std::move(zavolat));
    }

  private:
    using Records = RecordsAhead<MorvexSummary>;

    SaveQueue::Save zacniUkladat();
    void skonciUkladani(const Result<void>& saved);

    RecordFile<SummariesArchive> soubor_;
    Records records_;
    Records::List ukladane_; ///< by the save that is under way
    std::vector<MorvexSummary> summaries_;
    Signal<> onChange_;
    std::optional<Sentence> problem_;
    SaveQueue saves_;
};

} // namespace morvex
