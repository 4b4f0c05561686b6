#include "app/ui/models/RowList.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

QString idOf(const QVariant& row) {
    return row.toMap().value(QStringLiteral("id")).toString();
}

} // namespace

RowList::RowList(const ViewModel& owner, std::function<QVariantList()> read)
    : read_(std::move(read)), rows_(read_()) {
    connect(&owner, &ViewModel::changed, this, &RowList::readAnew);
}

int RowList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant RowList::data(const QModelIndex& index, int) const {
    return rows_.value(index.row());
}

QHash<int, QByteArray> RowList::roleNames() const {
    return {{Qt::UserRole, "modelData"}};
}

void RowList::readAnew() {
    auto now = read_();
    if (now == rows_) return;
    auto before = rows_.size();
    dropMissing(now);
    for (qsizetype position = 0; position < now.size(); ++position) place(now[position], position);
    if (before != rows_.size()) Q_EMIT countChanged();
}

void RowList::dropMissing(const QVariantList& now) {
    QSet<QString> ids;
    for (const auto& row : now) ids.insert(idOf(row));
    for (int position = rowCount() - 1; position >= 0; --position) {
        if (ids.contains(idOf(rows_[position]))) continue;
        beginRemoveRows({}, position, position);
        rows_.removeAt(position);
        endRemoveRows();
    }
}

void RowList::place(const QVariant& row, qsizetype position) {
    const auto at = static_cast<int>(position);
    auto stored = std::find_if(rows_.cbegin() + position, rows_.cend(),
                               [id = idOf(row)](const QVariant& other) { return idOf(other) == id; });
    if (stored == rows_.cend()) {
        beginInsertRows({}, at, at);
        rows_.insert(position, row);
        return endInsertRows();
    }
    if (const auto from = static_cast<int>(stored - rows_.cbegin()); from != at) {
        beginMoveRows({}, from, from, {}, at);
        rows_.move(from, position);
        endMoveRows();
    }
    if (rows_[position] == row) return;
    rows_[position] = row;
    Q_EMIT dataChanged(index(at), index(at));
}

} // namespace morvex
