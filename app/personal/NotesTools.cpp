#include "app/personal/NotesTools.h"

#include "app/tools/Arguments.h"
#include "shared/base/FrameLimit.h"
#include "shared/wire/MacToolName.h"

#include <boost/json/array.hpp>

namespace morvex {

namespace {

constexpr std::int64_t usuallyFound = 10;
constexpr const char* missingTitle = "Chybí přesný název poznámky.";

/// What was done, and the title of the note that it was done to.
ToolOutcome answer(std::string_view done, const Result<MorvexNote>& note) {
    if (!note) return ToolOutcome::refused(note.error());
    return ToolOutcome::done({{done, true}, {"title", note->title}});
}

} // namespace

void NotesTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    table.add(MacToolName::notesSearch, isOn, [this](ToolCall call) { return search(std::move(call)); });
    table.add(MacToolName::notesCreate, isOn, [this](ToolCall call) { return create(std::move(call)); });
    table.add(MacToolName::notesUpdate, isOn, [this](ToolCall call) { return update(std::move(call)); });
    table.add(MacToolName::notesDelete, isOn, [this](ToolCall call) { return remove(std::move(call)); });
}

Task<ToolOutcome> NotesTools::search(ToolCall call) {
    Arguments arguments(call.arguments);
    const auto found =
        poznamky_.hledat(arguments.textOrEmpty("query"), arguments.integer("limit").value_or(usuallyFound));
    // Before the answer is made of them, which would take several times their memory.
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

Task<ToolOutcome> NotesTools::create(ToolCall call) {
    Arguments arguments(call.arguments);
    const auto title = arguments.textOrEmpty("title");
    const auto body = arguments.textOrEmpty("body");
    if (title.empty() || body.empty()) co_return ToolOutcome::refused("Chybí název nebo obsah poznámky.");
    co_return answer("created", co_await poznamky_.vytvorit(title, body));
}

Task<ToolOutcome> NotesTools::update(ToolCall call) {
    Arguments arguments(call.arguments);
    const auto title = arguments.textOrEmpty("title");
    if (title.empty()) co_return ToolOutcome::refused(missingTitle);
    auto note = co_await poznamky_.upravit(title, arguments.text("new_title"), arguments.text("body"));
    co_return answer("updated", note);
}

Task<ToolOutcome> NotesTools::remove(ToolCall call) {
    Arguments arguments(call.arguments);
    const auto title = arguments.textOrEmpty("title");
    if (title.empty()) co_return ToolOutcome::refused(missingTitle);
    co_return answer("deleted", co_await poznamky_.smazat(title));
}

} // namespace morvex
