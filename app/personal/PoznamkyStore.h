#pragma once

#include "app/personal/NoteError.h"
#include "app/personal/NotesArchive.h"
#include "foundation/Clock.h"
#include "foundation/Random.h"
#include "foundation/archive/RecordFile.h"
#include "shared/base/Error.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// This computer's copy of the user's notes, in "Morvex/notes-from-iphone.json". Phone and computer both
/// edit; the revision of each note decides which version counts. A deleted note stays as a record for good.
/// Main thread; the file is read once and written at every change.
///
/// A local change that cannot be saved fails, but holds in memory until a later save writes it: the user's
/// words are not thrown away. A note of the phone that cannot be saved is put back, since the phone must not
/// be told that it was taken. The phone's notes leave room in the file for changes of this computer.
class PoznamkyStore {
  public:
    using File = RecordFile<NotesArchive>;
    /// Bytes of the file to which notes of the phone may make it grow.
    static constexpr std::size_t receivedLimit = File::sizeLimit / 4 * 3;

    static PoznamkyStore load(const std::filesystem::path& applicationSupport, Clock& clock, Random& random);

    /// What the user sees: the notes that are not deleted, last changed first.
    [[nodiscard]] const std::vector<MorvexNote>& notes() const { return notes_; }

    /// Why the last note of the phone could not be saved; nothing after a save that worked.
    [[nodiscard]] const std::optional<std::string>& problem() const { return problem_; }

    /// Every note, deleted ones too, in the order of their coming.
    [[nodiscard]] const std::vector<MorvexNote>& vsechny() const { return archive_.notes.records; }

    /// The first of `notes()` whose title or body contains the query, whatever its case; diacritics count. A
    /// blank query finds every note. `limit` counts as 1 to 20.
    [[nodiscard]] std::vector<MorvexNote> hledat(const std::string& query, std::int64_t limit) const;

    /// Fails with a `NoteError`, or with what prevented the save; so do the next two. Titles are cut to 160
    /// characters.
    Result<MorvexNote> vytvorit(const std::string& title, const std::string& body);

    /// Changes the first note with this title, case and diacritics aside; what is not given stays. The
    /// revision rises in any case. A refused body comes after the change of the title, which then holds in
    /// memory without a revision of its own.
    Result<MorvexNote> upravit(const std::string& title, const std::optional<std::string>& newTitle,
                               const std::optional<std::string>& newBody);

    /// Deletes the first note with this title, case and diacritics aside, and gives what stays of it.
    Result<MorvexNote> smazat(const std::string& title);

    /// Merges a note of the phone, just as it came. True when the phone may be told that it was taken, also
    /// for a version that does not count any more; false when it could not be saved.
    bool prijmout(MorvexNote note);

    /// After each local change that was saved; never for a note of the phone.
    std::function<void(const MorvexNote&)> priZmene;
    /// For views: `notes()` or `problem()` is another one than before.
    std::function<void()> onChange;

  private:
    PoznamkyStore(File soubor, Clock& clock, Random& random)
        : soubor_(std::move(soubor)), clock_(clock), random_(random) {}

    MorvexNote* najdi(const std::string& title);
    void zvysRevizi(MorvexNote& note);
    Result<MorvexNote> ulozZmenu(MorvexNote note);
    Result<void> uloz(std::size_t limit = File::sizeLimit);
    void obnovNotes();
    void setProblem(std::optional<std::string> problem);

    std::vector<MorvexNote>& records() { return archive_.notes.records; }

    File soubor_;
    Clock& clock_;
    Random& random_;
    NotesArchive archive_;
    std::vector<MorvexNote> notes_;
    std::optional<std::string> problem_;
};

} // namespace morvex
