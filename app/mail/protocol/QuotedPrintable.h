#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// The bytes of a quoted-printable text (RFC 2045, section 6.7): `=XX` becomes its byte, a `=` at the end of
/// a line joins it with the next one, everything else stays.
std::string quotedPrintableBytes(std::string_view text);

} // namespace morvex
