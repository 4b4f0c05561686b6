#pragma once

#include "shared/wire/JsonLimits.h"

#include <array>
#include <cstddef>

namespace morvex {

/// Adds up what a JSON text costs while it is read from its first byte to its last. The library finds the
/// members of an object by a hash, and the author of the names can make them collide, so that each name is
/// compared with all others of its object. The meter therefore counts these comparisons, not the members.
class JsonMeter {
  public:
    explicit JsonMeter(JsonLimits limits) : limits_(limits) {}

    /// Call these in the order of the text. Those that return a bool return false once a limit is exceeded.
    bool addValue() { return ++values_ <= limits_.values; }

    /// At most `jsonDepthLimit` objects may be open at a time.
    bool openObject() {
        nameBytes_[openObjects_++] = 0;
        return addValue();
    }

    void addName(std::size_t bytes) { nameBytes_[openObjects_ - 1] += bytes; }

    bool closeObject(std::size_t members) {
        comparisons_ += members * (members + nameBytes_[--openObjects_] / bytesComparedAtOnce) / 2;
        return comparisons_ <= limits_.comparisons();
    }

    [[nodiscard]] std::size_t values() const { return values_; }

    /// For each object half the square of its member count, plus as much again for every 64 bytes of a name.
    [[nodiscard]] std::size_t comparisons() const { return comparisons_; }

  private:
    static constexpr std::size_t bytesComparedAtOnce = 64;

    JsonLimits limits_;
    std::size_t values_ = 0;
    std::size_t comparisons_ = 0;
    std::array<std::size_t, jsonDepthLimit> nameBytes_{}; ///< one entry for each open object
    std::size_t openObjects_ = 0;
};

} // namespace morvex
