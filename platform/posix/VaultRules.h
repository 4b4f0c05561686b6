#pragma once

#include "shared/base/Error.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace morvex {

/// Rules common to all vaults of this system.
namespace vaultRules {

/// Limit of one item in bytes. A larger one is refused with `vaultStatus::io`, both when reading and when
/// writing.
constexpr std::size_t itemLimit = 1024 * 1024;

/// The status for an errno; `vaultStatus::io` for other errors.
std::int32_t statusOf(const Error& error);

/// The words for a status, if there are any.
std::optional<Sentence> text(std::int32_t status);

} // namespace vaultRules

} // namespace morvex
