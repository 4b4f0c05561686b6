#pragma once

#include <cstddef>

namespace morvex::customAppLimits {

/// Largest number of apps in one list from the phone; the computer drops the rest.
constexpr std::size_t mostApps = 256;

/// Limit of an app's id in bytes. The id is part of a vault item's name, where each byte may take three in a
/// file name, and file names have at most 255 bytes.
constexpr std::size_t longestID = 64;

/// Limit in bytes, as JSON, of an app's name and of its address: a whole list has to fit into the settings of
/// the computer.
constexpr std::size_t longestText = 4096;

} // namespace morvex::customAppLimits
