#include "app/personal/PoznamkyStore.h"

#include "app/personal/NewestFirst.h"
#include "foundation/Text.h"
#include "foundation/TextPattern.h"
#include "shared/base/Require.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace morvex {

namespace {

constexpr std::size_t longestTitle = 160;
/// A single character can have any size; the emoji of a family has 25 bytes.
constexpr std::size_t longestTitleBytes = 32 * longestTitle;
constexpr std::size_t longestQuery = 1000;
/// Bytes of a title that may name a note, because titles from the phone are not cut.
constexpr std::size_t longestNamed = 64 * 1024;
constexpr std::int64_t mostFound = 20;
/// Bytes of the file around its records.
constexpr std::size_t frameLength = 64;

std::string cutTitle(std::string_view title) {
    return firstCharacters(firstBytes(title, longestTitleBytes), longestTitle);
}

/// Bytes of the note's record, without the fields that every change modifies.
std::size_t lengthOf(const MorvexNote& note) {
    return encode(MorvexNote{note.id, note.title, note.body, {}, {}, 0, {}}).size();
}

Task<bool> refused() {
    co_return false;
}

} // namespace

PoznamkyStore::PoznamkyStore(const std::filesystem::path& applicationSupport, Saving saving, Random& random)
    : soubor_(applicationSupport / "Morvex" / "notes-from-iphone.json"),
      clock_(saving.clock),
      random_(random),
      records_(soubor_.load().notes.records),
      saves_(saving,
             {[this] { return startSaving(); }, [this](const Result<void>& saved) { finishSaving(saved); }}) {
    refreshNotes(records_.all());
}

std::vector<MorvexNote> PoznamkyStore::vsechny() const {
    return copied(records_.all());
}

std::vector<Uuid> PoznamkyStore::ids() const {
    std::vector<Uuid> ids;
    for (const auto& kept : records_.all()) ids.push_back(kept.record->id);
    return ids;
}

std::vector<MorvexNote> PoznamkyStore::hledat(const std::string& query, std::int64_t limit) const {
    const auto wanted = TextPattern::ignoringCase(excerpt(trim(query), longestQuery));
    const auto count = static_cast<std::size_t>(std::clamp<std::int64_t>(limit, 1, mostFound));
    std::vector<MorvexNote> found;
    for (const auto& note : notes_) {
        if (found.size() == count) break;
        const auto& folded = folded_.of(note);
        if (wanted.isAmong(folded.title) || wanted.isAmong(folded.body)) found.push_back(note);
    }
    return found;
}

Task<Result<MorvexNote>> PoznamkyStore::vytvorit(std::string title, std::string body) {
    const auto name = trim(title);
    auto content = trim(body);
    if (name.empty() || content.empty()) co_return fail(NoteError{NoteError::missingData});
    co_return co_await saveChange(
        {random_.uuid(), cutTitle(name), std::move(content), clock_.now(), clock_.now(), 1, std::nullopt});
}

Task<Result<MorvexNote>> PoznamkyStore::upravit(std::string title, std::optional<std::string> newTitle,
                                                std::optional<std::string> newBody) {
    const auto* found = lookUp(title);
    if (!found) co_return fail(NoteError{NoteError::notFound});
    auto note = *found;
    if (newTitle) {
        const auto name = trim(*newTitle);
        if (name.empty()) co_return fail(NoteError{NoteError::missingData});
        note.title = cutTitle(name);
    }
    if (newBody) {
        auto content = trim(*newBody);
        if (content.empty()) {
            if (newTitle) records_.change(std::move(note));
            co_return fail(NoteError{NoteError::missingData});
        }
        note.body = std::move(content);
    }
    raiseRevision(note);
    co_return co_await saveChange(std::move(note));
}

Task<Result<MorvexNote>> PoznamkyStore::smazat(std::string title) {
    const auto* found = lookUp(title);
    if (!found) co_return fail(NoteError{NoteError::notFound});
    auto note = *found;
    raiseRevision(note);
    note.deletedAt = note.updatedAt;
    co_return co_await saveChange(std::move(note));
}

Task<bool> PoznamkyStore::prijmout(MorvexNote note) {
    const auto* stored = records_.find(note.id);
    // The phone may forget its version once the version that replaces it is on the disk.
    if (stored && !note.supersedes(*stored)) return saves_.onDisk(records_.standing(note.id));
    if (!fits(note, stored)) {
        setProblem(SystemError{EFBIG}.popis());
        return refused();
    }
    const auto growth = note.title.size() + note.body.size();
    records_.receive(std::move(note));
    hasReceivedNote_ = true;
    return SaveQueue::onDisk(saves_.request(growth));
}

/// A note that does not get longer always fits.
bool PoznamkyStore::fits(const MorvexNote& note, const MorvexNote* stored) const {
    const auto length = lengthOf(note);
    const auto before = stored ? lengthOf(*stored) : 0;
    return length <= before || records_.bytes() - before + length + frameLength <= receivedLimit;
}

const MorvexNote* PoznamkyStore::lookUp(const std::string& title) const {
    if (title.size() > longestNamed) return nullptr;
    const auto wanted = fold(title);
    auto found = std::ranges::find_if(records_.all(), [&](const Records::Kept& kept) {
        return !kept.record->deletedAt && folded_.of(*kept.record).name == wanted;
    });
    return found == records_.all().end() ? nullptr : found->record.get();
}

void PoznamkyStore::raiseRevision(MorvexNote& note) const {
    require(note.revision < std::numeric_limits<std::uint64_t>::max(), "a note has no higher revision left");
    ++note.revision;
    note.updatedAt = clock_.now();
}

Task<Result<MorvexNote>> PoznamkyStore::saveChange(MorvexNote note) {
    records_.change(note);
    const auto save = saves_.request(note.title.size() + note.body.size());
    // A tool or a person is waiting for the result.
    saves_.hurry();
    CO_CHECK(co_await save->wait());
    priZmene_.tell(note);
    co_return note;
}

SaveQueue::Save PoznamkyStore::startSaving() {
    savesReceivedNote_ = std::exchange(hasReceivedNote_, false);
    beingSaved_ = records_.beginSave();
    return {records_.bytes(),
            [this, records = beingSaved_] { return soubor_.save({.notes = {copied(records)}}); }};
}

void PoznamkyStore::finishSaving(const Result<void>& saved) {
    const auto records = std::exchange(beingSaved_, {});
    if (saved)
        records_.saved();
    else
        records_.failed();
    folded_.keepOnly([this](const Uuid& id) {
        const auto* note = records_.find(id);
        return note && !note->deletedAt;
    });
    if (saved) {
        refreshNotes(records);
        setProblem(std::nullopt);
        return;
    }
    if (!savesReceivedNote_) return;
    refreshNotes(records_.withoutReceived());
    setProblem(saved.error().popis());
}

void PoznamkyStore::refreshNotes(const Records::List& records) {
    auto visible = records;
    std::erase_if(visible, [](const auto& kept) { return kept.record->deletedAt.has_value(); });
    visible = newestFirst(visible, &MorvexNote::updatedAt);
    const auto isSame = [](const auto& kept, const MorvexNote& note) { return *kept.record == note; };
    if (std::ranges::equal(visible, notes_, isSame)) return;
    notes_ = copied(visible);
    onChange_.tell();
}

void PoznamkyStore::setProblem(std::optional<Sentence> problem) {
    if (problem == problem_) return;
    problem_ = std::move(problem);
    onChange_.tell();
}

} // namespace morvex
