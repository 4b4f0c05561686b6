#include "app/ui/models/RecordsModel.h"

#include "app/ui/Localized.h"

#include <utility>

namespace morvex {

namespace {

QString idOfTitle(const QVariant& row) {
    return static_cast<const RecordTitle*>(row.constData())->id;
}

} // namespace

RecordsModel::RecordsModel(Source source, Clipboard& clipboard)
    : source_(std::move(source)),
      clipboard_(clipboard),
      rows_(*this, [this] { return readRows(); }, idOfTitle) {}

QVariantList RecordsModel::readRows() const {
    QVariantList rows;
    for (auto& title : source_.titles()) rows.push_back(QVariant::fromValue(std::move(title)));
    return rows;
}

QVariantMap RecordsModel::find(const QString& id) const {
    const auto uuid = Uuid::parse(id.toStdString());
    const auto record = uuid ? source_.find(*uuid) : std::nullopt;
    if (!record) return {};
    return {
        {QStringLiteral("id"), id},
        {QStringLiteral("title"), QString::fromStdString(record->title)},
        {QStringLiteral("body"), QString::fromStdString(record->body)},
        {QStringLiteral("date"), record->date},
        {QStringLiteral("origin"), record->origin},
    };
}

QString RecordsModel::trouble() const {
    const auto problem = source_.problem();
    if (!problem) return {};
    return localized("Poslední změnu z telefonu se nepodařilo uložit: {duvod}"_sentence(*problem));
}

void RecordsModel::copy(const QString& text) {
    clipboard_.setText(text.toStdString());
}

} // namespace morvex
