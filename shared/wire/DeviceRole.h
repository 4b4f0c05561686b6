#pragma once

#include "shared/wire/RawValues.h"

namespace morvex {

enum class DeviceRole { phone, mac };

template <> inline constexpr std::array<std::string_view, 2> rawValues<DeviceRole>{"phone", "mac"};

} // namespace morvex
