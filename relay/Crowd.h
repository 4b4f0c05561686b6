#pragma once

#include "relay/Origin.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <tuple>

namespace morvex {

/// Numbers by the range of addresses to which they belong; a greater number came later. Every call takes time
/// in the logarithm of them. Owned by the places.
class Crowd {
  public:
    using Number = std::uint64_t;

    void add(const Prefix& range, Number number);
    void remove(const Prefix& range, Number number);

    [[nodiscard]] std::size_t size() const { return size_; }

    [[nodiscard]] std::size_t sizeOf(const Prefix& range) const;

    /// Of the range with the most; of several such, of the one that has had the oldest for longest. Not
    /// empty.
    [[nodiscard]] const std::set<Number>& fullest() const;
    /// Null when the range has none.
    [[nodiscard]] const std::set<Number>* of(const Prefix& range) const;

  private:
    /// Ascending from the fullest: how few it has, and its oldest.
    using Rank = std::tuple<std::size_t, Number, Prefix>;

    static Rank rankOf(const Prefix& range, const std::set<Number>& numbers);

    std::map<Prefix, std::set<Number>> ranges_;
    std::set<Rank> ranks_;
    std::size_t size_ = 0;
};

} // namespace morvex
