#pragma once

#include "tests/servers/Outside.h"
#include "tests/support/PrivateNetwork.h"
#include "tests/support/TestAuthority.h"

#include <memory>

namespace morvex {

/// Where all tests of this program run; their `main` makes it. In it, relay.example is 127.0.0.2 and the
/// other names are 127.0.0.1.
struct TestNetwork {
    Outside outside;
    std::unique_ptr<PrivateNetwork> network;
    TestAuthority authority; ///< trusted in the network
};

/// Valid from before the first test until after the last.
TestNetwork& testNetwork();

} // namespace morvex
