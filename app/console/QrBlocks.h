#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// A QR code, of level L or of a higher one that takes no more room, as lines of half blocks for a terminal:
/// dark on light whatever the terminal's colours, with the quiet zone that scanners want. An empty text when
/// `content` does not fit into a code.
std::string qrBlocks(std::string_view content);

} // namespace morvex
