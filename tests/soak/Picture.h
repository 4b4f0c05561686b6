#pragma once

#include "tests/soak/Sample.h"

#include <string>
#include <vector>

namespace morvex {

/// The curves of a run, one below the other, as SVG 1.1. `title` has no characters that XML reserves.
std::string pictureOf(const std::vector<Sample>& samples, const std::string& title);

} // namespace morvex
