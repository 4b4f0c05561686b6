#pragma once

#include "shared/trust/Crypto.h"

#include <cstddef>
#include <deque>
#include <set>
#include <string_view>

namespace morvex {

/// The identities of the messages accepted last: a set that keeps the latest `strop` of them, of each its
/// digest, since the peer makes them as long as it likes.
class VideneZpravy {
  public:
    static constexpr std::size_t obvyklyStrop = 512;

    explicit VideneZpravy(std::size_t strop = obvyklyStrop) : strop_(strop) {}

    [[nodiscard]] bool obsahuje(std::string_view msgID) const;

    [[nodiscard]] std::size_t pocet() const { return poradi_.size(); }

    /// An identity that is here already keeps its place.
    void vloz(std::string_view msgID);

  private:
    std::deque<Digest> poradi_;
    std::set<Digest> mnozina_;
    std::size_t strop_;
};

} // namespace morvex
