#pragma once

#include "tests/support/TestAuthority.h"
#include "tests/support/TestServer.h"

#include <atomic>
#include <cstddef>
#include <vector>

namespace morvex {

/// What an attacker on the path does with a connection to a server whose address is https.
struct TlsFault {
    const char* what;
    TestServer::Script play;
};

/// False servers for a client that trusts `authority`. `told` counts the bytes that a client has told them in
/// spite of it. Both outlive the faults.
std::vector<TlsFault> tlsFaults(TestAuthority& authority, std::atomic<std::size_t>& told);

} // namespace morvex
