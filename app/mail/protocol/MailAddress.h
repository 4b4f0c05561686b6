#pragma once

#include "shared/base/Error.h"

#include <string_view>

namespace morvex {

/// Whether an address may be written into a command and a header: plain ASCII, `name@host.domain`, no line
/// break. Fails with `MacMailProtocolError::InvalidAddress`.
Result<void> checkMailAddress(std::string_view address);

} // namespace morvex
