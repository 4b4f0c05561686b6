#include "app/ui/models/RecordsModel.h"

#include "app/ui/Localized.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

QVariantMap row(const RecordsModel::Record& record) {
    return {
        {QStringLiteral("id"), QString::fromStdString(record.id)},
        {QStringLiteral("title"), QString::fromStdString(record.title)},
        {QStringLiteral("body"), QString::fromStdString(record.body)},
        {QStringLiteral("date"), record.date},
        {QStringLiteral("origin"), record.origin},
    };
}

} // namespace

RecordsModel::RecordsModel(Source source, Clipboard& clipboard)
    : source_(std::move(source)), clipboard_(clipboard), rows_(*this, [this] { return readRows(); }) {}

QVariantList RecordsModel::readRows() const {
    QVariantList rows;
    for (const auto& record : source_.records()) rows.push_back(row(record));
    return rows;
}

QVariantMap RecordsModel::find(const QString& id) const {
    const auto records = source_.records();
    auto found = std::ranges::find(records, id.toStdString(), &Record::id);
    return found == records.end() ? QVariantMap() : row(*found);
}

QString RecordsModel::trouble() const {
    const auto problem = source_.problem();
    if (!problem) return {};
    const std::string told = "Poslední změnu z telefonu se nepodařilo uložit: " + *problem;
    return localized(told);
}

void RecordsModel::copy(const QString& text) {
    clipboard_.setText(text.toStdString());
}

} // namespace morvex
