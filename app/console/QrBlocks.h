#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// A QR code as lines of half blocks for a terminal. Its level is L, or a higher one that needs no larger
/// code. Dark on light whatever the terminal's colours, with the quiet zone that scanners need. Empty if
/// `content` does not fit into a code.
std::string qrBlocks(std::string_view content);

} // namespace morvex
