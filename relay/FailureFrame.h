#pragma once

#include "relay/Line.h"
#include "shared/wire/RelayMessage.h"

#include <string>

namespace morvex {

/// The frame that reports a failure to a device, with the words that the device shows.
std::string failureFrame(RelayFailure code);

/// How the socket of a refused device ends: the reason is sent, then the socket is closed, since the device
/// gets no new session on it.
Ending refusalEnding(RelayFailure code);

} // namespace morvex
