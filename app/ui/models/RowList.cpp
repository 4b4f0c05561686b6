#include "app/ui/models/RowList.h"

#include <algorithm>
#include <utility>

namespace morvex {

RowList::RowList(const ViewModel& owner, std::function<QVariantList()> read, Id idOf)
    : read_(std::move(read)), idOf_(idOf), rows_(read_()) {
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

QString RowList::idOfMap(const QVariant& row) {
    return row.toMap().value(QStringLiteral("id")).toString();
}

RowList::Ids RowList::idsOf(const QVariantList& rows) const {
    Ids ids;
    ids.reserve(rows.size());
    for (const auto& row : rows) ids.insert(idOf_(row));
    return ids;
}

void RowList::readAnew() {
    auto now = read_();
    if (now == rows_) return;
    const auto before = rows_.size();
    auto steps = mostSteps;
    if (!dropMissing(now, steps) || !placeAll(now, steps)) {
        beginResetModel();
        rows_ = std::move(now);
        endResetModel();
    }
    if (before != rows_.size()) Q_EMIT countChanged();
}

bool RowList::dropMissing(const QVariantList& now, int& steps) {
    const auto wanted = idsOf(now);
    const auto isMissing = [&](qsizetype position) { return !wanted.contains(idOf_(rows_[position])); };
    for (auto end = rows_.size(); end > 0; --end) {
        auto first = end;
        while (first > 0 && isMissing(first - 1)) --first;
        if (first == end) continue;
        if (--steps < 0) return false;
        drop(first, end);
        end = first;
    }
    return true;
}

bool RowList::placeAll(const QVariantList& now, int& steps) {
    const auto stored = idsOf(rows_);
    for (qsizetype position = 0; position < now.size(); ++position) {
        auto end = position;
        while (end < now.size() && !stored.contains(idOf_(now[end]))) ++end;
        if (end > position) {
            if (--steps < 0) return false;
            insert(now, position, end);
            position = end - 1;
            continue;
        }
        if (position >= rows_.size()) return false; // two rows of one id
        if (idOf_(rows_[position]) != idOf_(now[position]) && (--steps < 0 || !bring(now, position, stored)))
            return false;
        update(now[position], position);
    }
    return rows_.size() == now.size();
}

void RowList::drop(qsizetype first, qsizetype end) {
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end - 1));
    rows_.remove(first, end - first);
    endRemoveRows();
}

void RowList::insert(const QVariantList& now, qsizetype first, qsizetype end) {
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(end - 1));
    rows_.insert(first, end - first, QVariant());
    std::copy(now.cbegin() + first, now.cbegin() + end, rows_.begin() + first);
    endInsertRows();
}

/// Moves the wanted row from behind to this position.
bool RowList::bring(const QVariantList& now, qsizetype position, const Ids& stored) {
    const auto wanted = idOf_(now[position]);
    const auto place = find(wanted, position);
    if (place > position + 1 && place < rows_.size()) move(place, position);
    if (place != position + 1) return place < rows_.size();
    // The row at this position has moved down instead: it is put behind the last of those rows that come
    // before it and are in the list already.
    const auto id = idOf_(rows_[position]);
    auto before = position;
    for (auto at = position; at < now.size() && idOf_(now[at]) != id; ++at)
        if (stored.contains(idOf_(now[at]))) before = at;
    const auto to = find(idOf_(now[before]), position);
    if (to < rows_.size()) move(position, to);
    return to < rows_.size();
}

void RowList::move(qsizetype from, qsizetype to) {
    // The model counts the target position with the row still at its old place.
    const auto place = static_cast<int>(to > from ? to + 1 : to);
    beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, place);
    rows_.move(from, to);
    endMoveRows();
}

void RowList::update(const QVariant& row, qsizetype position) {
    if (rows_[position] == row) return;
    rows_[position] = row;
    const auto at = index(static_cast<int>(position));
    Q_EMIT dataChanged(at, at);
}

qsizetype RowList::find(const QString& id, qsizetype from) const {
    const auto found = std::find_if(rows_.cbegin() + std::min(from, rows_.size()), rows_.cend(),
                                    [&](const QVariant& row) { return idOf_(row) == id; });
    return found - rows_.cbegin();
}

} // namespace morvex
