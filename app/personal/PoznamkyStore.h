#pragma once

#include "app/personal/FoldedNotes.h"
#include "app/personal/NoteError.h"
#include "app/personal/NotesArchive.h"
#include "foundation/Clock.h"
#include "foundation/Random.h"
#include "foundation/SaveQueue.h"
#include "foundation/Signal.h"
#include "foundation/archive/RecordFile.h"
#include "foundation/archive/RecordsAhead.h"
#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// This computer's copy of the user's notes, in "Morvex/notes-from-iphone.json". Phone and computer both
/// edit; the revision of each note decides which version is valid. The record of a deleted note is kept for
/// ever. Main thread; the file is read once and written on the storage thread, with rapid changes written
/// together. The owner awaits `saved` before it destroys the store.
///
/// A local change that cannot be saved fails, but stays in memory until a later save writes it, so that the
/// user's words are not lost. A note of the phone that cannot be saved is undone, since the phone must not be
/// told that it was taken. The phone's notes leave room in the file for changes of this computer.
///
/// `notes()` and `hledat` show what is on the disk; everything else uses what is in memory.
class PoznamkyStore {
  public:
    using File = RecordFile<NotesArchive>;
    /// Notes of the phone may make the file grow up to this many bytes.
    static constexpr std::size_t receivedLimit = File::sizeLimit / 4 * 3;

    /// Reads the file.
    PoznamkyStore(const std::filesystem::path& applicationSupport, Saving saving, Random& random);

    /// What the user sees: the notes that are not deleted, most recently changed first.
    [[nodiscard]] const std::vector<MorvexNote>& notes() const { return notes_; }

    /// Why the last note of the phone could not be saved; empty after a successful save.
    [[nodiscard]] const std::optional<Sentence>& problem() const { return problem_; }

    /// Copies of all notes, including deleted ones, in the order of their arrival.
    [[nodiscard]] std::vector<MorvexNote> vsechny() const;

    /// The ids of `vsechny()`.
    [[nodiscard]] std::vector<Uuid> ids() const;

    /// The note as it is now, or null. Valid until the next change.
    [[nodiscard]] const MorvexNote* note(const Uuid& id) const { return records_.find(id); }

    /// The same, but also null if the note came from the phone and is not on the disk yet.
    [[nodiscard]] const MorvexNote* keptNote(const Uuid& id) const {
        return records_.isReceivedAhead(id) ? nullptr : note(id);
    }

    /// The first of `notes()` whose title or body contains the query, ignoring case but not diacritics. A
    /// blank query finds every note; of a longer one only the first 1,000 characters (8,000 bytes) are used.
    /// `limit` is clamped to 1 to 20.
    [[nodiscard]] std::vector<MorvexNote> hledat(const std::string& query, std::int64_t limit) const;

    /// Ends when the note is saved. Fails with a `NoteError` or with the error of the save; the next two
    /// functions do the same. Titles are cut to 160 characters and 5,120 bytes.
    Task<Result<MorvexNote>> vytvorit(std::string title, std::string body);

    /// Changes the first note with this title, ignoring case and diacritics. Values that are not given stay.
    /// The revision rises even if nothing is given. If the new body is refused, the new title stays in
    /// memory, but without a revision of its own.
    Task<Result<MorvexNote>> upravit(std::string title, std::optional<std::string> newTitle,
                                     std::optional<std::string> newBody);

    /// Deletes the first note with this title, ignoring case and diacritics, and returns its remaining
    /// record.
    Task<Result<MorvexNote>> smazat(std::string title);

    /// Merges a note of the phone at once, unchanged; the task waits for the save. Returns true if the phone
    /// may be told that the note was taken, even if a newer version already replaces it; false if it, or the
    /// version that replaces it, could not be saved.
    Task<bool> prijmout(MorvexNote note);

    /// Starts a waiting save now instead of collecting more changes.
    void hurry() { saves_.hurry(); }

    /// The same; resumes when all saves requested so far have ended.
    Task<void> saved() { return saves_.settled(); }

    /// How many notes are kept in folded form.
    [[nodiscard]] std::size_t folded() const { return folded_.size(); }

    /// Called after each local change that was saved, never for a note of the phone.
    [[nodiscard]] Connection priZmene(std::function<void(const MorvexNote&)> callback) {
        return priZmene_.connect(std::move(callback));
    }

    /// For views: called when `notes()` or `problem()` has changed.
    [[nodiscard]] Connection onChange(std::function<void()> callback) {
        return onChange_.connect(std::move(callback));
    }

  private:
    using Records = RecordsAhead<MorvexNote>;

    [[nodiscard]] const MorvexNote* lookUp(const std::string& title) const;
    void raiseRevision(MorvexNote& note) const;
    Task<Result<MorvexNote>> saveChange(MorvexNote note);
    [[nodiscard]] bool fits(const MorvexNote& note, const MorvexNote* stored) const;
    SaveQueue::Save startSaving();
    void finishSaving(const Result<void>& saved);
    void refreshNotes(const Records::List& records);
    void setProblem(std::optional<Sentence> problem);

    File soubor_;
    Signal<MorvexNote> priZmene_;
    Signal<> onChange_;
    Clock& clock_;
    Random& random_;
    Records records_;
    Records::List beingSaved_;       ///< what the running save writes
    bool hasReceivedNote_ = false;   ///< a note of the phone waits for the next save
    bool savesReceivedNote_ = false; ///< the running save contains a note of the phone
    std::vector<MorvexNote> notes_;
    mutable FoldedNotes folded_; ///< a cache that const functions fill
    std::optional<Sentence> problem_;
    SaveQueue saves_;
};

} // namespace morvex
