#pragma once

namespace morvex {

/// Whether the environment names a display, Wayland or X.
bool isThereADisplay();

} // namespace morvex
