#pragma once

#include "shared/base/Error.h"

#include <filesystem>
#include <string>

namespace morvex {

/// The text of the only QR code in a PNG picture of at most 16 MiB and 32 million pixels. Fails with a
/// `PhoneError` for wrong usage.
Result<std::string> readQrPicture(const std::filesystem::path& file);

} // namespace morvex
