#include "app/ui/models/CompanionModel.h"

#include "app/ui/ShortDate.h"

#include <initializer_list>
#include <utility>
#include <vector>

namespace morvex {

namespace {

RecordsModel::Source notesOf(const PoznamkyStore& store) {
    auto records = [&store] {
        std::vector<RecordsModel::Record> all;
        for (const auto& note : store.notes())
            all.push_back({note.id.text(), note.title, note.body, shortDate(note.updatedAt)});
        return all;
    };
    return {records, [&store] { return store.problem(); }};
}

/// The period that a summary is about, and where it came from.
QString originOf(const MorvexSummary& summary) {
    auto origin = shortDate(summary.periodStart) + QStringLiteral(" – ") + shortDate(summary.periodEnd);
    for (const auto& source : summary.sources)
        origin += QStringLiteral(" · ") + QString::fromStdString(source);
    return origin;
}

RecordsModel::Source summariesOf(const SouhrnyStore& store) {
    auto records = [&store] {
        std::vector<RecordsModel::Record> all;
        for (const auto& summary : store.summaries())
            all.push_back({summary.id.text(), summary.title, summary.body, shortDate(summary.createdAt),
                           originOf(summary)});
        return all;
    };
    return {records, [&store] { return store.problem(); }};
}

} // namespace

CompanionModel::CompanionModel(Companion& companion, Surroundings surroundings)
    : companion_(companion),
      surroundings_(std::move(surroundings)),
      link_(companion, surroundings_.clock, surroundings_.scope),
      pairing_(companion, {surroundings_.clock, surroundings_.scope, surroundings_.clipboard}),
      approval_(companion.schvalovani()),
      integrations_(companion, surroundings_.scope),
      folders_(companion.slozky(), companion.stav(), surroundings_.scope),
      wakefulness_(companion.bdelost()),
      customApps_(companion.customApps(), companion.stav(), surroundings_.scope),
      voice_(companion.hlas()),
      tasks_(companion),
      notes_(notesOf(companion.poznamky()), surroundings_.clipboard),
      summaries_(summariesOf(companion.souhrny()), surroundings_.clipboard),
      about_(companion.stav(), QString::fromStdString(surroundings_.appVersion), surroundings_.clipboard) {
    companion_.poznamky().onChange = [this] {
        notes_.refresh();
        integrations_.refreshRows();
    };
    companion_.souhrny().onChange = [this] { summaries_.refresh(); };
}

CompanionModel::~CompanionModel() {
    companion_.poznamky().onChange = nullptr;
    companion_.souhrny().onChange = nullptr;
}

void CompanionModel::refresh() {
    for (ViewModel* part : std::initializer_list<ViewModel*>{&link_, &pairing_, &approval_, &integrations_,
                                                             &folders_, &wakefulness_, &customApps_, &voice_,
                                                             &tasks_, &notes_, &summaries_, &about_})
        part->refresh();
    integrations_.refreshRows();
}

void CompanionModel::openMainWindow() {
    surroundings_.openMainWindow();
}

void CompanionModel::quit() {
    surroundings_.quit();
}

} // namespace morvex
