#include "app/personal/PoznamkyStore.h"

#include "app/personal/NewestFirst.h"
#include "foundation/Text.h"
#include "foundation/TextPattern.h"
#include "shared/base/Require.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace morvex {

namespace {

constexpr std::size_t longestTitle = 160;
constexpr std::int64_t mostFound = 20;

/// Bytes of its record, but for what each change changes.
std::size_t lengthOf(const MorvexNote& note) {
    return encode(MorvexNote{note.id, note.title, note.body, {}, {}, 0, {}}).size();
}

} // namespace

PoznamkyStore PoznamkyStore::load(const std::filesystem::path& applicationSupport, Clock& clock,
                                  Random& random) {
    PoznamkyStore store(File(applicationSupport / "Morvex" / "notes-from-iphone.json"), clock, random);
    store.archive_ = store.soubor_.load();
    store.obnovNotes();
    return store;
}

std::vector<MorvexNote> PoznamkyStore::hledat(const std::string& query, std::int64_t limit) const {
    const auto wanted = TextPattern::ignoringCase(trim(query));
    const auto count = static_cast<std::size_t>(std::clamp<std::int64_t>(limit, 1, mostFound));
    std::vector<MorvexNote> found;
    for (const auto& note : notes_) {
        if (found.size() == count) break;
        if (wanted.isInAnyCaseIn(note.title) || wanted.isInAnyCaseIn(note.body)) found.push_back(note);
    }
    return found;
}

Result<MorvexNote> PoznamkyStore::vytvorit(const std::string& title, const std::string& body) {
    const auto name = trim(title);
    auto content = trim(body);
    if (name.empty() || content.empty()) return fail(NoteError{NoteError::missingData});
    records().push_back({random_.uuid(), firstCharacters(name, longestTitle), std::move(content),
                         clock_.now(), clock_.now(), 1, std::nullopt});
    return ulozZmenu(records().back());
}

Result<MorvexNote> PoznamkyStore::upravit(const std::string& title,
                                          const std::optional<std::string>& newTitle,
                                          const std::optional<std::string>& newBody) {
    auto* note = najdi(title);
    if (!note) return fail(NoteError{NoteError::notFound});
    if (newTitle) {
        const auto name = trim(*newTitle);
        if (name.empty()) return fail(NoteError{NoteError::missingData});
        note->title = firstCharacters(name, longestTitle);
    }
    if (newBody) {
        auto content = trim(*newBody);
        if (content.empty()) return fail(NoteError{NoteError::missingData});
        note->body = std::move(content);
    }
    zvysRevizi(*note);
    return ulozZmenu(*note);
}

Result<MorvexNote> PoznamkyStore::smazat(const std::string& title) {
    auto* note = najdi(title);
    if (!note) return fail(NoteError{NoteError::notFound});
    zvysRevizi(*note);
    note->deletedAt = note->updatedAt;
    return ulozZmenu(*note);
}

bool PoznamkyStore::prijmout(MorvexNote note) {
    auto stored = std::ranges::find(records(), note.id, &MorvexNote::id);
    const bool isNew = stored == records().end();
    if (!isNew && !note.supersedes(*stored)) return true;
    const bool grows = isNew || lengthOf(note) > lengthOf(*stored);
    if (isNew)
        stored = records().insert(stored, std::move(note));
    else
        std::swap(*stored, note);
    auto saved = uloz(grows ? receivedLimit : File::sizeLimit);
    if (saved) return true;
    if (isNew)
        records().pop_back();
    else
        std::swap(*stored, note);
    obnovNotes();
    setProblem(saved.error().popis());
    return false;
}

MorvexNote* PoznamkyStore::najdi(const std::string& title) {
    const auto wanted = fold(title);
    auto found = std::ranges::find_if(records(), [&wanted](const MorvexNote& note) {
        return !note.deletedAt && fold(note.title) == wanted;
    });
    return found == records().end() ? nullptr : &*found;
}

void PoznamkyStore::zvysRevizi(MorvexNote& note) {
    vyzaduj(note.revision < std::numeric_limits<std::uint64_t>::max(), "a note has no higher revision left");
    ++note.revision;
    note.updatedAt = clock_.now();
}

Result<MorvexNote> PoznamkyStore::ulozZmenu(MorvexNote note) {
    CHECK(uloz());
    if (priZmene) priZmene(note);
    return note;
}

Result<void> PoznamkyStore::uloz(std::size_t limit) {
    auto saved = soubor_.save(archive_, limit);
    if (!saved) return saved;
    obnovNotes();
    setProblem(std::nullopt);
    return {};
}

void PoznamkyStore::obnovNotes() {
    auto visible = newestFirst(vsechny(), &MorvexNote::updatedAt);
    std::erase_if(visible, [](const MorvexNote* note) { return note->deletedAt.has_value(); });
    const auto isSame = [](const MorvexNote* left, const MorvexNote& right) { return *left == right; };
    if (std::ranges::equal(visible, notes_, isSame)) return;
    std::vector<MorvexNote> notes;
    notes.reserve(visible.size());
    for (const auto* note : visible) notes.push_back(*note);
    notes_ = std::move(notes);
    if (onChange) onChange();
}

void PoznamkyStore::setProblem(std::optional<std::string> problem) {
    if (problem == problem_) return;
    problem_ = std::move(problem);
    if (onChange) onChange();
}

} // namespace morvex
