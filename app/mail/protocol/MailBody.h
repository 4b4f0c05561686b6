#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

// The text of a message as a server tells it. The cost is linear in its length.

/// The text of a body whose encoding is guessed from the text itself: base64, quoted-printable or neither.
/// Parts of a message stay together, with their boundaries.
std::string decodedBody(std::string text);

/// The decoded body in the lines of a reply to FETCH. Lines that begin with `*` or `)` count as the server's
/// own. Nothing if the reply brings no body.
std::optional<std::string> fetchedBody(std::string lines);

} // namespace morvex
