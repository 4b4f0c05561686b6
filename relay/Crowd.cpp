#include "relay/Crowd.h"

#include <limits>

namespace morvex {

void Crowd::add(const Prefix& range, Number number) {
    auto& numbers = ranges_[range];
    if (!numbers.empty()) ranks_.erase(rankOf(range, numbers));
    numbers.insert(number);
    ranks_.insert(rankOf(range, numbers));
    ++size_;
}

void Crowd::remove(const Prefix& range, Number number) {
    const auto found = ranges_.find(range);
    if (found == ranges_.end()) return;
    ranks_.erase(rankOf(range, found->second));
    size_ -= found->second.erase(number);
    if (found->second.empty())
        ranges_.erase(found);
    else
        ranks_.insert(rankOf(range, found->second));
}

std::size_t Crowd::sizeOf(const Prefix& range) const {
    const auto* numbers = of(range);
    return numbers ? numbers->size() : 0;
}

const std::set<Crowd::Number>& Crowd::fullest() const {
    return ranges_.at(std::get<Prefix>(*ranks_.begin()));
}

const std::set<Crowd::Number>* Crowd::of(const Prefix& range) const {
    const auto found = ranges_.find(range);
    return found == ranges_.end() ? nullptr : &found->second;
}

Crowd::Rank Crowd::rankOf(const Prefix& range, const std::set<Number>& numbers) {
    return {std::numeric_limits<std::size_t>::max() - numbers.size(), *numbers.begin(), range};
}

} // namespace morvex
