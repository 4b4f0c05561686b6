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
/// edit; the revision of each note decides which version counts. A deleted note stays as a record for good.
/// Main thread; the file is read once and written on the storage thread, several changes at once when they
/// come fast. The owner awaits `ulozeno` before the store goes.
///
/// A local change that cannot be saved fails, but holds in memory until a later save writes it: the user's
/// words are not thrown away. A note of the phone that cannot be saved is put back, since the phone must not
/// be told that it was taken. The phone's notes leave room in the file for changes of this computer.
///
/// `notes()` and `hledat` show what is on the disk, everything else works on what is in memory.
class PoznamkyStore {
  public:
    using File = RecordFile<NotesArchive>;
    /// Bytes of the file to which notes of the phone may make it grow.
    static constexpr std::size_t receivedLimit = File::sizeLimit / 4 * 3;

    /// Reads the file.
    PoznamkyStore(const std::filesystem::path& applicationSupport, Saving saving, Random& random);

    /// What the user sees: the notes that are not deleted, last changed first.
    [[nodiscard]] const std::vector<MorvexNote>& notes() const { return notes_; }

    /// Why the last note of the phone could not be saved; nothing after a save that worked.
    [[nodiscard]] const std::optional<Sentence>& problem() const { return problem_; }

    /// A copy of every note, deleted ones too, in the order of their coming.
    [[nodiscard]] std::vector<MorvexNote> vsechny() const;

    /// The ids of `vsechny()`.
    [[nodiscard]] std::vector<Uuid> ids() const;

    /// The note as it is now, or null. Valid until the next change.
    [[nodiscard]] const MorvexNote* note(const Uuid& id) const { return records_.find(id); }

    /// The same, but null also for a note of the phone that is not on the disk yet.
    [[nodiscard]] const MorvexNote* keptNote(const Uuid& id) const {
        return records_.isReceivedAhead(id) ? nullptr : note(id);
    }

    /// The first of `notes()` whose title or body contains the query, whatever its case; diacritics count. A
    /// blank query finds every note; of a longer one the first 1,000 characters (8,000 bytes) count. `limit`
    /// counts as 1 to 20.
    [[nodiscard]] std::vector<MorvexNote> hledat(const std::string& query, std::int64_t limit) const;

    /// Ends when the note is saved. Fails with a `NoteError`, or with what prevented the save; so do the next
    /// two. Titles are cut to 160 characters and 5,120 bytes.
    Task<Result<MorvexNote>> vytvorit(std::string title, std::string body);

    /// Changes the first note with this title, case and diacritics aside; what is not given stays. The
    /// revision rises in any case. A refused body comes after the change of the title, which then holds in
    /// memory without a revision of its own.
    Task<Result<MorvexNote>> upravit(std::string title, std::optional<std::string> newTitle,
                                     std::optional<std::string> newBody);

    /// Deletes the first note with this title, case and diacritics aside, and gives what stays of it.
    Task<Result<MorvexNote>> smazat(std::string title);

    /// Merges a note of the phone at once, just as it came; the task waits for the save. True when the phone
    /// may be told that it was taken, also for a version that does not count any more; false when it, or the
    /// version that counts instead, could not be saved.
    Task<bool> prijmout(MorvexNote note);

    /// Lets nothing wait for more changes any longer.
    void spechat() { saves_.hurry(); }

    /// The same, and resumes when the saves that were asked for until now have ended.
    Task<void> ulozeno() { return saves_.settled(); }

    /// How many notes are kept as they are compared.
    [[nodiscard]] std::size_t folded() const { return folded_.size(); }

    /// After each local change that was saved; never for a note of the phone.
    [[nodiscard]] Connection priZmene(std::function<void(const MorvexNote&)> zavolat) {
        return priZmene_.connect(std::move(zavolat));
    }

    /// For views: `notes()` or `problem()` is another one than before.
    [[nodiscard]] Connection onChange(std::function<void()> zavolat) {
        return onChange_.connect(std::move(zavolat));
    }

  private:
    using Records = RecordsAhead<MorvexNote>;

    [[nodiscard]] const MorvexNote* najdi(const std::string& title) const;
    void zvysRevizi(MorvexNote& note) const;
    Task<Result<MorvexNote>> ulozZmenu(MorvexNote note);
    [[nodiscard]] bool vejdeSe(const MorvexNote& note, const MorvexNote* stored) const;
    SaveQueue::Save zacniUkladat();
    void skonciUkladani(const Result<void>& saved);
    void obnovNotes(const Records::List& records);
    void setProblem(std::optional<Sentence> problem);

    File soubor_;
    Signal<MorvexNote> priZmene_;
    Signal<> onChange_;
    Clock& clock_;
    Random& random_;
    Records records_;
    Records::List ukladane_;         ///< by the save that is under way
    bool jePrijata_ = false;         ///< a note of the phone waits for the next save
    bool jePrijataUkladana_ = false; ///< and for the one that is under way
    std::vector<MorvexNote> notes_;
    mutable FoldedNotes folded_; ///< filled by what only looks
    std::optional<Sentence> problem_;
    SaveQueue saves_;
};

} // namespace morvex
