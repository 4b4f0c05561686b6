#pragma once

#include "shared/wire/JsonLimits.h"

#include <array>
#include <cstddef>

namespace morvex {

/// Adds up what a JSON text asks for while it is read, from its first byte to its last. The library finds the
/// members of an object by a hash that whoever writes the names can make collide, so that each name is
/// compared with all others of its object. The meter therefore counts these comparisons, not the members.
class JsonMeter {
  public:
    explicit JsonMeter(JsonLimits limits) : limits_(limits) {}

    /// The calls follow the text. Those that give a flag give false from where the text asks for too much.
    bool addValue() { return ++values_ <= limits_.values; }

    /// At most `jsonDepthLimit` objects are open at one time.
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

    /// Half the square of the members of each object, and as much again for every 64 bytes of a name.
    [[nodiscard]] std::size_t comparisons() const { return comparisons_; }

  private:
    static constexpr std::size_t bytesComparedAtOnce = 64;

    JsonLimits limits_;
    std::size_t values_ = 0;
    std::size_t comparisons_ = 0;
    std::array<std::size_t, jsonDepthLimit> nameBytes_{}; ///< of each open object
    std::size_t openObjects_ = 0;
};

} // namespace morvex
