#pragma once

#include <cstddef>

namespace morvex::customAppLimits {

/// Apps of one list of the phone; the computer drops the rest.
constexpr std::size_t mostApps = 256;

/// Bytes of an app's id. Its token lies in the vault under a name with this id in it, each byte of which may
/// take three in the name of a file, and such a name has 255 at most.
constexpr std::size_t longestID = 64;

/// Bytes of an app's name and address each, as JSON writes them: a whole list has to fit among the settings
/// of the computer.
constexpr std::size_t longestText = 4096;

} // namespace morvex::customAppLimits
