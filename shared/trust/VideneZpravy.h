#pragma once

#include "shared/trust/Crypto.h"

#include <cstddef>
#include <deque>
#include <set>
#include <string_view>

namespace morvex {

/// The ids of the most recently accepted messages: a set that keeps the latest `strop` of them. It stores
/// digests, since the peer chooses the length of the ids.
class VideneZpravy {
  public:
    static constexpr std::size_t usualLimit = 512;

    explicit VideneZpravy(std::size_t strop = usualLimit) : strop_(strop) {}

    [[nodiscard]] bool obsahuje(std::string_view msgID) const;

    [[nodiscard]] std::size_t pocet() const { return poradi_.size(); }

    /// An id that is already in the set keeps its position.
    void insert(std::string_view msgID);

  private:
    std::deque<Digest> poradi_;
    std::set<Digest> mnozina_;
    std::size_t strop_;
};

} // namespace morvex
