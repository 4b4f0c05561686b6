#pragma once

#include "shared/base/Date.h"

#include <algorithm>
#include <vector>

namespace morvex {

/// The records by this date of theirs, later ones first; those of one date keep their order. The pointers
/// stand while `records` does.
template <class Record>
std::vector<const Record*> newestFirst(const std::vector<Record>& records, Date Record::* date) {
    std::vector<const Record*> sorted;
    sorted.reserve(records.size());
    for (const auto& record : records) sorted.push_back(&record);
    std::ranges::sort(sorted, [date](const Record* left, const Record* right) {
        return left->*date != right->*date ? left->*date > right->*date : left < right;
    });
    return sorted;
}

} // namespace morvex
