#pragma once

#include <functional>
#include <vector>

namespace morvex {

/// Those who want to hear of a change, in the order in which they came. Used on one thread.
class Listeners {
  public:
    /// For the life of this object.
    void add(std::function<void()> listener) { listeners_.push_back(std::move(listener)); }

    void tell() const {
        for (const auto& listener : listeners_) listener();
    }

  private:
    std::vector<std::function<void()>> listeners_;
};

} // namespace morvex
