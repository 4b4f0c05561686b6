#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_set>

namespace morvex {

/// The identities of the messages accepted last: a set that keeps the latest `strop` of them.
class VideneZpravy {
  public:
    static constexpr std::size_t obvyklyStrop = 512;

    explicit VideneZpravy(std::size_t strop = obvyklyStrop) : strop_(strop) {}

    [[nodiscard]] bool obsahuje(const std::string& msgID) const { return mnozina_.contains(msgID); }

    [[nodiscard]] std::size_t pocet() const { return poradi_.size(); }

    /// An identity that is here already keeps its place.
    void vloz(const std::string& msgID);

  private:
    std::deque<std::string> poradi_;
    std::unordered_set<std::string> mnozina_;
    std::size_t strop_;
};

} // namespace morvex
