#pragma once

#include "platform/ports/LocalTime.h"

#include <string>

namespace morvex {

/// A computer in the zone that a test sets.
class FixedLocalTime final : public LocalTime {
  public:
    explicit FixedLocalTime(std::string name = "Europe/Prague") : name(std::move(name)) {}

    [[nodiscard]] TimeZone zone() override { return TimeZone::named(name).value(); }

    std::string name;
};

} // namespace morvex
