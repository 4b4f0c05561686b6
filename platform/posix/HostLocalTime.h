#pragma once

#include "platform/ports/LocalTime.h"

#include <filesystem>
#include <utility>

namespace morvex {

/// The zone that is set for this process or for the whole computer: by `TZ`, by the link `/etc/localtime`
/// into the database of the zones, or by its name in `/etc/timezone`. The first of them that names a known
/// zone counts; rules that `TZ` may hold instead of a name (POSIX, section 8.3) do not. Read anew each time,
/// since a person who travels sets another zone while the program runs.
class HostLocalTime final : public LocalTime {
  public:
    explicit HostLocalTime(std::filesystem::path settings = "/etc") : settings_(std::move(settings)) {}

    [[nodiscard]] TimeZone zone() override;

  private:
    std::filesystem::path settings_;
};

} // namespace morvex
