#pragma once

#include "tests/support/Household.h"

#include <gtest/gtest.h>

namespace morvex {

/// Tests of whole programs.
class EndToEnd : public testing::Test, protected Household {};

} // namespace morvex
