#pragma once

#include "platform/ports/LocalTime.h"

#include <string>

namespace morvex {

/// A computer in the time zone that the test sets.
class FixedLocalTime final : public LocalTime {
  public:
    explicit FixedLocalTime(std::string name = "Europe/Prague") : name(std::move(name)) {}

    [[nodiscard]] TimeZone zone() override { return TimeZone::named(name).value(); }

    std::string name;
};

} // namespace morvex
