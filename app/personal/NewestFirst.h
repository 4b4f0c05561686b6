#pragma once

#include "foundation/archive/RecordsAhead.h"
#include "shared/base/Date.h"
#include "shared/base/Uuid.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <vector>

namespace morvex {

/// The records sorted by the given date, later ones first. Records with the same date keep their order.
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

/// The `records` in the order of `order`; those that `order` lacks come after the others.
template <class Record>
std::vector<Kept<Record>> inOrderOf(const std::vector<Kept<Record>>& order,
                                    const std::vector<Kept<Record>>& records) {
    std::map<Uuid, std::size_t> ranks;
    for (const auto& kept : order) ranks.emplace(kept.record->id, ranks.size());
    std::vector<Kept<Record>> ordered(ranks.size());
    std::vector<Kept<Record>> behind;
    for (const auto& kept : records) {
        const auto rank = ranks.find(kept.record->id);
        const bool hasPlace = rank != ranks.end() && !ordered[rank->second].record;
        (hasPlace ? ordered[rank->second] : behind.emplace_back()) = kept;
    }
    std::erase_if(ordered, [](const auto& kept) { return !kept.record; });
    std::ranges::move(behind, std::back_inserter(ordered));
    return ordered;
}

template <class Record> std::vector<Record> copied(const std::vector<Kept<Record>>& records) {
    std::vector<Record> copies;
    copies.reserve(records.size());
    for (const auto& kept : records) copies.push_back(*kept.record);
    return copies;
}

} // namespace morvex
