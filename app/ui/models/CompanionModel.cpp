#include "app/ui/models/CompanionModel.h"

#include "app/approvals/Schvalovani.h"
#include "app/companion/Bdelost.h"
#include "app/companion/CompanionState.h"
#include "app/ui/ShortDate.h"

#include <QMetaProperty>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace morvex {

namespace {

/// One row for each record, with the date in the member `changed`.
template <class Record>
std::vector<RecordTitle> titlesOf(const std::vector<Record>& records, Date Record::* changed) {
    std::vector<RecordTitle> titles;
    titles.reserve(records.size());
    for (const auto& record : records)
        titles.push_back(RecordTitle::of(record.id, record.title, record.*changed));
    return titles;
}

/// What `whole` makes of the record with this id, if there is one.
template <class Record, class Whole>
std::optional<RecordsModel::Record> found(const std::vector<Record>& records, const Uuid& id, Whole whole) {
    const auto place = std::ranges::find(records, id, &Record::id);
    return place == records.end() ? std::nullopt : std::optional(whole(*place));
}

RecordsModel::Record wholeNote(const MorvexNote& note) {
    return {note.title, note.body, shortDate(note.updatedAt)};
}

RecordsModel::Source notesOf(const PoznamkyStore& store) {
    return {[&store] { return titlesOf(store.notes(), &MorvexNote::updatedAt); },
            [&store](const Uuid& id) { return found(store.notes(), id, wholeNote); },
            [&store] { return store.problem(); }};
}

/// The period that a summary covers and its sources.
QString originOf(const MorvexSummary& summary) {
    auto origin = shortDate(summary.periodStart) + QStringLiteral(" – ") + shortDate(summary.periodEnd);
    for (const auto& source : summary.sources)
        origin += QStringLiteral(" · ") + QString::fromStdString(source);
    return origin;
}

RecordsModel::Record wholeSummary(const MorvexSummary& summary) {
    return {summary.title, summary.body, shortDate(summary.createdAt), originOf(summary)};
}

RecordsModel::Source summariesOf(const SouhrnyStore& store) {
    return {[&store] { return titlesOf(store.summaries(), &MorvexSummary::createdAt); },
            [&store](const Uuid& id) { return found(store.summaries(), id, wholeSummary); },
            [&store] { return store.problem(); }};
}

} // namespace

CompanionModel::CompanionModel(Companion& companion, Features& features, Services services)
    : features_(features),
      services_(std::move(services)),
      link_(companion, services_.clock, services_.scope),
      pairing_(companion, {services_.clock, services_.scope, services_.clipboard}),
      approval_(companion.schvalovani()),
      integrations_(companion, features, services_.scope),
      folders_(features.files.slozky(), companion.stav(), services_.scope),
      wakefulness_(companion.bdelost(), companion.stav()),
      calendars_(features.organizer.calendar(), companion.stav(), services_.scope),
      customApps_(features.customApps.service(), companion.stav(), services_.scope),
      directMail_(features.mail.smtp(), companion.stav(), services_.scope),
      appleMail_(features.mail.appleAccounts(), companion.stav(), services_.scope),
      voice_(features.voice.controller()),
      tasks_(features.agents),
      notes_(notesOf(features.records.poznamky()), services_.clipboard),
      summaries_(summariesOf(features.records.souhrny()), services_.clipboard),
      about_(companion.stav(), QString::fromStdString(services_.appVersion), services_.clipboard) {
    notesChanged_ = features_.records.poznamky().onChange([this] {
        notes_.refresh();
        integrations_.refreshRows();
    });
    summariesChanged_ = features_.records.souhrny().onChange([this] { summaries_.refresh(); });
}

void CompanionModel::refresh() {
    const auto& meta = *metaObject();
    for (int index = QObject::staticMetaObject.propertyCount(); index < meta.propertyCount(); ++index)
        if (auto* part = qobject_cast<ViewModel*>(meta.property(index).read(this).value<QObject*>()))
            part->refresh();
    integrations_.refreshRows();
}

void CompanionModel::openMainWindow() {
    services_.openMainWindow();
}

void CompanionModel::quit() {
    services_.quit();
}

} // namespace morvex
