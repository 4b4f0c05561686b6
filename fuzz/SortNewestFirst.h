#pragma once

#include "shared/base/Date.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

namespace morvex {

/// Sorts later dates first and keeps the order of records with the same date. An independent implementation
/// of the stores' order.
template <class Record, class Member> void sortNewestFirst(std::vector<Record>& records, Member date) {
    const auto dateOf = [date](const Record& record) { return Date(record.*date); };
    for (auto next = records.begin(); next != records.end(); ++next) {
        const auto place =
            std::ranges::upper_bound(records.begin(), next, dateOf(*next), std::greater{}, dateOf);
        std::rotate(place, next, std::next(next));
    }
}

} // namespace morvex
