#pragma once

#include "shared/base/Error.h"

#include <filesystem>
#include <string>

namespace morvex {

/// The text of the one QR code in a PNG picture of at most 16 MiB and 32 million pixels. Fails with a
/// `PhoneError` of wrong usage.
Result<std::string> readQrPicture(const std::filesystem::path& file);

} // namespace morvex
