#include "app/ui/models/RecordsModel.h"

#include "app/ui/Localized.h"

#include <QVariantMap>

#include <utility>

namespace morvex {

RecordsModel::RecordsModel(Source source, Clipboard& clipboard)
    : source_(std::move(source)), clipboard_(clipboard), rows_(*this, [this] { return readRows(); }) {}

QVariantList RecordsModel::readRows() const {
    QVariantList rows;
    for (const auto& record : source_.records())
        rows.push_back(QVariantMap{
            {QStringLiteral("id"), QString::fromStdString(record.id)},
            {QStringLiteral("title"), QString::fromStdString(record.title)},
            {QStringLiteral("body"), QString::fromStdString(record.body)},
            {QStringLiteral("date"), record.date},
        });
    return rows;
}

QString RecordsModel::trouble() const {
    return localized(source_.problem().value_or(std::string()));
}

void RecordsModel::copy(const QString& text) {
    clipboard_.setText(text.toStdString());
}

} // namespace morvex
