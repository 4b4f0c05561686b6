#pragma once

#include "foundation/Clock.h"
#include "foundation/Random.h"
#include "foundation/archive/RecordFile.h"
#include "phone/PhoneArchive.h"
#include "shared/base/Error.h"
#include "shared/wire/MacPayload.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace morvex {

/// The phone's notes and summaries in "records.json", and which of them the Mac has not confirmed yet. Dates
/// have whole seconds, as on their way. Changes of the user are saved at once; for what the Mac tells, `save`
/// is called when it is worth it.
class PhoneRecords {
  public:
    static PhoneRecords load(const std::filesystem::path& folder, Clock& clock, Random& random);

    /// Deleted ones too.
    [[nodiscard]] const std::vector<MorvexNote>& notes() const { return archive_.notes; }

    [[nodiscard]] const std::vector<MorvexSummary>& summaries() const { return archive_.summaries; }

    [[nodiscard]] bool isConfirmed(const Uuid& id) const;

    /// These four fail with a `PhoneError` when a text is blank, no note has the title (case and diacritics
    /// aside), or the file cannot be written.
    Result<MorvexNote> create(const std::string& title, const std::string& body);
    Result<MorvexNote> edit(const std::string& title, const std::string& body,
                            const std::optional<std::string>& newTitle);
    Result<MorvexNote> remove(const std::string& title);
    Result<MorvexSummary> summarize(const std::string& title, const std::string& body,
                                    std::vector<std::string> sources);

    /// Takes the Mac's version of a note unless ours counts more. Of two versions that count the same the
    /// Mac's stays, since the Mac keeps its own too. A Mac that tells an older version than it once confirmed
    /// has lost ours, which is then offered again. True when anything has changed.
    bool merge(MorvexNote note);

    /// The Mac has this revision of a record. True when that is news.
    bool confirm(const Uuid& id, std::uint64_t revision);

    /// The Mac has told of all its notes, which are among these. What was confirmed and is not among them it
    /// has lost, and since summaries are never told, it counts as having lost them too then. True when there
    /// is such a thing, which is then offered again.
    bool missedAmong(const std::set<Uuid>& told);

    /// For a new Mac: nothing is confirmed.
    Result<void> forgetConfirmations();

    Result<void> save();

    /// What the Mac has not confirmed yet.
    [[nodiscard]] const std::vector<Uuid>& unconfirmed() const { return archive_.unconfirmed; }

    /// The update to send for one of these; nothing for any other record.
    [[nodiscard]] std::optional<MacPayload> offer(const Uuid& id) const;

  private:
    PhoneRecords(RecordFile<PhoneArchive> file, Clock& clock, Random& random)
        : file_(std::move(file)), clock_(clock), random_(random) {}

    [[nodiscard]] Date now() const { return dateFromSeconds(wholeSeconds(clock_.now())); }

    Result<MorvexNote*> find(const std::string& title);
    Result<MorvexNote> saveChange(MorvexNote& note, Date changed);
    Result<void> saveUnconfirmed(const Uuid& id);

    RecordFile<PhoneArchive> file_;
    Clock& clock_;
    Random& random_;
    PhoneArchive archive_;
};

} // namespace morvex
