#pragma once

#include "shared/base/Error.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace morvex {

/// What every vault of this system keeps to.
namespace vaultRules {

/// Bytes of one item. A larger one is refused with `vaultStatus::io`, in either direction.
constexpr std::size_t itemLimit = 1024 * 1024;

/// An errno as a status, or `vaultStatus::io`.
std::int32_t statusOf(const Error& error);

/// The words for a status, or nothing.
std::optional<Sentence> text(std::int32_t status);

} // namespace vaultRules

} // namespace morvex
