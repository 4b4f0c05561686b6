#pragma once

#include "shared/base/Date.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

namespace morvex {

/// Later dates first; records of one date keep their order. A second way to the order of the stores.
template <class Record, class Member> void sortNewestFirst(std::vector<Record>& records, Member date) {
    const auto dateOf = [date](const Record& record) { return Date(record.*date); };
    for (auto next = records.begin(); next != records.end(); ++next) {
        const auto place =
            std::ranges::upper_bound(records.begin(), next, dateOf(*next), std::greater{}, dateOf);
        std::rotate(place, next, std::next(next));
    }
}

} // namespace morvex
