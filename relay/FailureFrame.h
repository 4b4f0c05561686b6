#pragma once

#include "relay/Line.h"
#include "shared/wire/RelayMessage.h"

#include <string>

namespace morvex {

/// The frame that tells a device of a failure, with the words that the device shows.
std::string failureFrame(RelayFailure code);

/// How the socket of a refused device ends: it hears why. It gets no new session on this socket, so it is
/// closed.
Ending refusalEnding(RelayFailure code);

} // namespace morvex
