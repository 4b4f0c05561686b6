#include "phone/PhoneRecords.h"

#include "foundation/Text.h"
#include "phone/PhoneError.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <limits>
#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::days summarizedPeriod{1};

Result<void> checkTexts(const std::string& title, const std::string& body) {
    if (title.empty() || body.empty()) return failWith(ExitCode::usage, "Chybí název nebo text.");
    return {};
}

template <class Record> const Record* withId(const std::vector<Record>& records, const Uuid& id) {
    auto found = std::ranges::find(records, id, &Record::id);
    return found == records.end() ? nullptr : &*found;
}

} // namespace

PhoneRecords PhoneRecords::load(const std::filesystem::path& folder, Clock& clock, Random& random) {
    PhoneRecords records(RecordFile<PhoneArchive>(folder / "records.json"), clock, random);
    records.archive_ = records.file_.load();
    return records;
}

bool PhoneRecords::isConfirmed(const Uuid& id) const {
    return std::ranges::find(archive_.unconfirmed, id) == archive_.unconfirmed.end();
}

Result<MorvexNote> PhoneRecords::create(const std::string& title, const std::string& body) {
    const auto created = now();
    MorvexNote note{random_.uuid(), trim(title), trim(body), created, created, 0, std::nullopt};
    CHECK(checkTexts(note.title, note.body));
    return saveChange(archive_.notes.emplace_back(std::move(note)), created);
}

Result<MorvexNote> PhoneRecords::edit(const std::string& title, const std::string& body,
                                      const std::optional<std::string>& newTitle) {
    TRY(auto*, note, find(title));
    auto name = newTitle ? trim(*newTitle) : note->title;
    auto content = trim(body);
    CHECK(checkTexts(name, content));
    note->title = std::move(name);
    note->body = std::move(content);
    return saveChange(*note, now());
}

Result<MorvexNote> PhoneRecords::remove(const std::string& title) {
    TRY(auto*, note, find(title));
    const auto deleted = now();
    note->deletedAt = deleted;
    return saveChange(*note, deleted);
}

Result<MorvexSummary> PhoneRecords::summarize(const std::string& title, const std::string& body,
                                              std::vector<std::string> sources) {
    const auto written = now();
    MorvexSummary summary{random_.uuid(), trim(title),        trim(body), written, written - summarizedPeriod,
                          written,        std::move(sources), 1};
    CHECK(checkTexts(summary.title, summary.body));
    archive_.summaries.push_back(summary);
    CHECK(saveUnconfirmed(summary.id));
    return summary;
}

bool PhoneRecords::merge(MorvexNote note) {
    auto own = std::ranges::find(archive_.notes, note.id, &MorvexNote::id);
    if (own != archive_.notes.end() && own->supersedes(note)) {
        const bool isNews = isConfirmed(note.id);
        if (isNews) archive_.unconfirmed.push_back(note.id);
        return isNews;
    }
    const bool isConfirmation = std::erase(archive_.unconfirmed, note.id) > 0;
    if (own == archive_.notes.end())
        archive_.notes.push_back(std::move(note));
    else if (*own == note)
        return isConfirmation;
    else
        *own = std::move(note);
    return true;
}

bool PhoneRecords::confirm(const Uuid& id, std::uint64_t revision) {
    const auto* note = withId(notes(), id);
    const auto* summary = withId(summaries(), id);
    const bool isLatest = (note && note->revision <= revision) || (summary && summary->revision <= revision);
    return isLatest && std::erase(archive_.unconfirmed, id) > 0;
}

bool PhoneRecords::missedAmong(const std::set<Uuid>& told) {
    const std::set<Uuid> waiting(archive_.unconfirmed.begin(), archive_.unconfirmed.end());
    bool isLost = false;
    for (const auto& note : notes()) {
        if (told.contains(note.id) || waiting.contains(note.id)) continue;
        archive_.unconfirmed.push_back(note.id);
        isLost = true;
    }
    if (!isLost) return false;
    for (const auto& summary : summaries())
        if (!waiting.contains(summary.id)) archive_.unconfirmed.push_back(summary.id);
    return true;
}

Result<void> PhoneRecords::forgetConfirmations() {
    if (notes().empty() && summaries().empty()) return {};
    archive_.unconfirmed.clear();
    std::ranges::transform(notes(), std::back_inserter(archive_.unconfirmed), &MorvexNote::id);
    std::ranges::transform(summaries(), std::back_inserter(archive_.unconfirmed), &MorvexSummary::id);
    return save();
}

Result<void> PhoneRecords::save() {
    auto saved = file_.save(archive_);
    if (saved) return saved;
    return failWith(ExitCode::refused, "Poznámky a souhrny nejde uložit: " + saved.error().popis().czech());
}

std::optional<MacPayload> PhoneRecords::offer(const Uuid& id) const {
    if (isConfirmed(id)) return std::nullopt;
    if (const auto* note = withId(notes(), id)) return MacPayload{MacPayload::NoteUpdate{*note}};
    if (const auto* summary = withId(summaries(), id)) return MacPayload{MacPayload::SummaryUpdate{*summary}};
    return std::nullopt;
}

Result<MorvexNote*> PhoneRecords::find(const std::string& title) {
    const auto wanted = fold(title);
    auto found = std::ranges::find_if(archive_.notes, [&wanted](const MorvexNote& note) {
        return !note.deletedAt && fold(note.title) == wanted;
    });
    if (found == archive_.notes.end())
        return failWith(ExitCode::refused, "Poznámku „" + title + "“ tu nemám.");
    if (found->revision == std::numeric_limits<std::uint64_t>::max())
        return failWith(ExitCode::refused, "Poznámku „" + title + "“ už nejde změnit.");
    return &*found;
}

Result<MorvexNote> PhoneRecords::saveChange(MorvexNote& note, Date changed) {
    ++note.revision;
    note.updatedAt = changed;
    CHECK(saveUnconfirmed(note.id));
    return note;
}

Result<void> PhoneRecords::saveUnconfirmed(const Uuid& id) {
    if (isConfirmed(id)) archive_.unconfirmed.push_back(id);
    return save();
}

} // namespace morvex
