#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace morvex {

/// Holds one callback of a `Signal`. Destroying this object ends the callback, also while the signal calls
/// others. May outlive the signal.
class Connection {
  public:
    Connection() = default;

  private:
    template <class... Arguments> friend class Signal;

    explicit Connection(std::shared_ptr<void> slot) : slot_(std::move(slot)) {}

    std::shared_ptr<void> slot_;
};

/// A list of callbacks, called in the order in which they were connected. Used on one thread. A callback may
/// connect others, end its own connection and others, and destroy the object that contains the signal.
template <class... Arguments> class Signal {
  public:
    using Slot = std::function<void(const Arguments&...)>;

    /// `slot` is called from the next `tell` on, as long as the connection lives.
    [[nodiscard]] Connection connect(Slot slot) {
        std::erase_if(slots_, [](const auto& known) { return known.expired(); });
        auto kept = std::make_shared<Slot>(std::move(slot));
        slots_.push_back(kept);
        return Connection(std::move(kept));
    }

    /// Whether `tell` would call anybody.
    [[nodiscard]] bool isHeard() const {
        return std::ranges::any_of(slots_, [](const auto& known) { return !known.expired(); });
    }

    void tell(const Arguments&... arguments) const {
        // A copy, since a callback may change the list.
        for (const auto& known : std::vector(slots_))
            if (const auto slot = known.lock()) (*slot)(arguments...);
    }

  private:
    std::vector<std::weak_ptr<Slot>> slots_;
};

} // namespace morvex
