#include "phone/RecordCommands.h"

#include "phone/RecordText.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <utility>

namespace morvex::commands {

namespace {

using Words = std::vector<std::string>;

struct Action {
    RecordKind kind;
    std::string_view name;
    std::size_t fewestWords; ///< after the name
    std::size_t mostWords;
    Result<Delivery> (*work)(Phone& phone, const Words& words);
};

template <class Record> void show(const Phone& phone, const Record& record, const std::string& remark = {}) {
    if (phone.options.isJson)
        phone.terminal.printJson(encode(record));
    else
        phone.terminal.print(recordLines(record, remark));
}

template <class Record> void list(const Phone& phone, const Record& record) {
    show(phone, record, phone.records.isConfirmed(record.id) ? "" : "u Macu nepotvrzeno");
}

template <class Record> Result<Delivery> shown(const Phone& phone, const Result<Record>& changed) {
    if (!changed) return fail(changed.error());
    show(phone, *changed);
    return Delivery{{changed->id}};
}

Result<Delivery> listNotes(Phone& phone, const Words&) {
    for (const auto& note : phone.records.notes())
        if (!note.deletedAt) list(phone, note);
    return Delivery{};
}

Result<Delivery> createNote(Phone& phone, const Words& words) {
    return shown(phone, phone.records.create(words[1], words[2]));
}

Result<Delivery> editNote(Phone& phone, const Words& words) {
    const auto newTitle = words.size() > 3 ? std::optional(words[3]) : std::nullopt;
    return shown(phone, phone.records.edit(words[1], words[2], newTitle));
}

Result<Delivery> deleteNote(Phone& phone, const Words& words) {
    return shown(phone, phone.records.remove(words[1]));
}

Result<Delivery> deliverAll(Phone& phone, const Words&) {
    return Delivery{phone.records.unconfirmed()};
}

Result<Delivery> listSummaries(Phone& phone, const Words&) {
    for (const auto& summary : phone.records.summaries()) list(phone, summary);
    return Delivery{};
}

Result<Delivery> sendSummary(Phone& phone, const Words& words) {
    return shown(phone, phone.records.summarize(words[1], words[2], {words.begin() + 3, words.end()}));
}

constexpr std::array<Action, 7> actions{{
    {RecordKind::notes, "list", 0, 0, listNotes},
    {RecordKind::notes, "create", 2, 2, createNote},
    {RecordKind::notes, "edit", 2, 3, editNote},
    {RecordKind::notes, "delete", 1, 1, deleteNote},
    {RecordKind::notes, "sync", 0, 0, deliverAll},
    {RecordKind::summaries, "list", 0, 0, listSummaries},
    {RecordKind::summaries, "send", 2, 3, sendSummary},
}};

} // namespace

Result<Delivery> keepRecords(Phone& phone, RecordKind kind, const Words& words) {
    const auto* action = std::ranges::find_if(actions, [&](const Action& row) {
        return row.kind == kind && !words.empty() && row.name == words[0] && words.size() > row.fewestWords &&
               words.size() <= row.mostWords + 1;
    });
    if (action != actions.end()) return action->work(phone, words);
    return failWith(ExitCode::usage, kind == RecordKind::notes
                                         ? "Použití: notes list | create TITLE TEXT | edit TITLE TEXT "
                                           "[NEW-TITLE] | delete TITLE | sync"
                                         : "Použití: summaries list | send TITLE TEXT [SOURCE]");
}

Task<Result<void>> synchronize(Phone& phone, PhoneSession& session, Attendant& attendant) {
    CO_CHECK(co_await session.untilReady(phone.options.timeout, attendant));
    const auto& records = attendant.records();
    CO_CHECK(
        co_await session.until([&records] { return records.isSettled(); }, phone.options.timeout, attendant));
    if (phone.records.unconfirmed().empty()) co_return Result<void>{};
    co_return failWith(ExitCode::refused, "Mac nepřevzal všechno. Nabídnu mu to při příštím spojení.");
}

} // namespace morvex::commands
