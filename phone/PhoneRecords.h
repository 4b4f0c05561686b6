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
/// have whole seconds, as on the wire. Changes of the user are saved at once; for changes from the Mac the
/// caller decides when to call `save`.
class PhoneRecords {
  public:
    static PhoneRecords load(const std::filesystem::path& folder, Clock& clock, Random& random);

    /// Including deleted ones.
    [[nodiscard]] const std::vector<MorvexNote>& notes() const { return archive_.notes; }

    [[nodiscard]] const std::vector<MorvexSummary>& summaries() const { return archive_.summaries; }

    [[nodiscard]] bool isConfirmed(const Uuid& id) const;

    /// These four fail with a `PhoneError` when a text is blank, no note has the title (ignoring case and
    /// diacritics), or the file cannot be written.
    Result<MorvexNote> create(const std::string& title, const std::string& body);
    Result<MorvexNote> edit(const std::string& title, const std::string& body,
                            const std::optional<std::string>& newTitle);
    Result<MorvexNote> remove(const std::string& title);
    Result<MorvexSummary> summarize(const std::string& title, const std::string& body,
                                    std::vector<std::string> sources);

    /// Takes the Mac's version of a note unless ours supersedes it. Of two versions with equal precedence the
    /// Mac's is kept, since the Mac keeps its own, too. A Mac that reports an older version than it once
    /// confirmed has lost ours, so ours is offered again. Returns whether anything changed.
    bool merge(MorvexNote note);

    /// The Mac has this revision of a record. Returns true if that was not known.
    bool confirm(const Uuid& id, std::uint64_t revision);

    /// The Mac has reported all its notes; `told` contains them. Confirmed notes that are missing there were
    /// lost by the Mac. Since summaries are never reported, all of them then count as lost, too. Returns true
    /// if something was lost; it is then offered again.
    bool missedAmong(const std::set<Uuid>& told);

    /// For a new Mac: marks everything as unconfirmed.
    Result<void> forgetConfirmations();

    Result<void> save();

    /// The records that the Mac has not confirmed yet.
    [[nodiscard]] const std::vector<Uuid>& unconfirmed() const { return archive_.unconfirmed; }

    /// The update message for one of these records; nothing for any other id.
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
