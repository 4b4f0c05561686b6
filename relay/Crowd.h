#pragma once

#include "relay/Origin.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <tuple>

namespace morvex {

/// Numbers grouped by the range of addresses to which they belong; a greater number came later. Every call
/// takes logarithmic time. Owned by `Places`.
class Crowd {
  public:
    using Number = std::uint64_t;

    void add(const Prefix& range, Number number);
    void remove(const Prefix& range, Number number);

    [[nodiscard]] std::size_t size() const { return size_; }

    [[nodiscard]] std::size_t sizeOf(const Prefix& range) const;

    /// The numbers of the range with the most; among several such, of the range whose oldest number is the
    /// oldest. Must not be called when empty.
    [[nodiscard]] const std::set<Number>& fullest() const;
    /// Null if the range has none.
    [[nodiscard]] const std::set<Number>* of(const Prefix& range) const;

  private:
    /// Sort key that puts the fullest range first: inverted count, oldest number, range.
    using Rank = std::tuple<std::size_t, Number, Prefix>;

    static Rank rankOf(const Prefix& range, const std::set<Number>& numbers);

    std::map<Prefix, std::set<Number>> ranges_;
    std::set<Rank> ranks_;
    std::size_t size_ = 0;
};

} // namespace morvex
