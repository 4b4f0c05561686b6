#pragma once

namespace morvex {

/// Whether this process belongs to a session with a display, Wayland's or X's, as its environment tells.
bool isThereADisplay();

} // namespace morvex
