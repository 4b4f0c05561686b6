#include "app/personal/NotesTools.h"

#include "shared/base/FrameLimit.h"
#include "shared/wire/MacToolName.h"

#include <boost/json/array.hpp>

namespace morvex {

struct NotesSearch {
    std::optional<std::string> query;
    std::optional<std::int64_t> limit;
};

void describe(auto& io, Is<NotesSearch> auto& search) {
    io.optional("query", search.query);
    io.optional("limit", search.limit);
}

struct NewNote {
    std::string title;
    std::string body;
};

void describe(auto& io, Is<NewNote> auto& note) {
    io.required("title", note.title);
    io.required("body", note.body);
}

struct NoteChange {
    std::string title;
    std::optional<std::string> newTitle;
    std::optional<std::string> body;
};

void describe(auto& io, Is<NoteChange> auto& change) {
    io.required("title", change.title);
    io.optional("new_title", change.newTitle);
    io.optional("body", change.body);
}

struct NoteRemoval {
    std::string title;
};

void describe(auto& io, Is<NoteRemoval> auto& removal) {
    io.required("title", removal.title);
}

namespace {

constexpr std::int64_t usuallyFound = 10;
constexpr const char* missingTitle = "Chybí přesný název poznámky.";

/// Contains what was done and the title of the note.
ToolOutcome answer(std::string_view done, const Result<MorvexNote>& note) {
    if (!note) return ToolOutcome::refused(note.error());
    return ToolOutcome::done({{done, true}, {"title", note->title}});
}

} // namespace

void NotesTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    table.add(MacToolName::notesSearch, isOn, this, &NotesTools::search);
    table.add(MacToolName::notesCreate, isOn, this, &NotesTools::create);
    table.add(MacToolName::notesUpdate, isOn, this, &NotesTools::update);
    table.add(MacToolName::notesDelete, isOn, this, &NotesTools::remove);
}

Task<ToolOutcome> NotesTools::search(NotesSearch search, ToolCall) {
    const auto found = poznamky_.hledat(search.query.value_or(""), search.limit.value_or(usuallyFound));
    // Checked before the answer is built, because the answer takes several times the memory of the notes.
    std::size_t size = 0;
    for (const auto& note : found) size += note.title.size() + note.body.size();
    if (size > frameLimit) co_return ToolOutcome::tooLong();
    boost::json::array notes;
    for (const auto& note : found)
        notes.push_back(boost::json::object{{"id", note.id.text()},
                                            {"title", note.title},
                                            {"body", note.body},
                                            {"updated_at", formatDate(note.updatedAt)}});
    co_return ToolOutcome::done({{"notes", std::move(notes)}});
}

Task<ToolOutcome> NotesTools::create(NewNote note, ToolCall) {
    if (note.title.empty() || note.body.empty())
        co_return ToolOutcome::refused("Chybí název nebo obsah poznámky.");
    co_return answer("created", co_await poznamky_.vytvorit(std::move(note.title), std::move(note.body)));
}

Task<ToolOutcome> NotesTools::update(NoteChange change, ToolCall) {
    if (change.title.empty()) co_return ToolOutcome::refused(missingTitle);
    co_return answer("updated",
                     co_await poznamky_.upravit(std::move(change.title), std::move(change.newTitle),
                                                std::move(change.body)));
}

Task<ToolOutcome> NotesTools::remove(NoteRemoval removal, ToolCall) {
    if (removal.title.empty()) co_return ToolOutcome::refused(missingTitle);
    co_return answer("deleted", co_await poznamky_.smazat(std::move(removal.title)));
}

} // namespace morvex
