#pragma once

#include "foundation/archive/RecordsAhead.h"
#include "shared/base/Date.h"

#include <algorithm>
#include <vector>

namespace morvex {

/// The records by this date of theirs, later ones first; those of one date keep their order.
template <class Record>
std::vector<Kept<Record>> newestFirst(const std::vector<Kept<Record>>& records, Date Record::* date) {
    std::vector<const Kept<Record>*> order;
    order.reserve(records.size());
    for (const auto& kept : records) order.push_back(&kept);
    std::ranges::sort(order, [date](const auto* left, const auto* right) {
        const auto &earlier = (*left->record).*date, &later = (*right->record).*date;
        return earlier != later ? earlier > later : left < right;
    });
    std::vector<Kept<Record>> sorted;
    sorted.reserve(order.size());
    for (const auto* kept : order) sorted.push_back(*kept);
    return sorted;
}

/// Copies of the records.
template <class Record> std::vector<Record> copied(const std::vector<Kept<Record>>& records) {
    std::vector<Record> copies;
    copies.reserve(records.size());
    for (const auto& kept : records) copies.push_back(*kept.record);
    return copies;
}

} // namespace morvex
