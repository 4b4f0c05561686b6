#pragma once

#include <cstddef>

namespace morvex {

/// Writes what the socket takes at once; the number of bytes, or -1 with an errno. No signal is raised for a
/// peer that has gone.
std::ptrdiff_t sendNow(int socket, const char* bytes, std::size_t size);

/// Reads what has arrived; the number of bytes, 0 at the end of the stream, or -1 with an errno.
std::ptrdiff_t receiveNow(int socket, char* bytes, std::size_t size);

} // namespace morvex
