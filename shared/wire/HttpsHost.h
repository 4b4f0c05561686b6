#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The host of an address with the scheme https in any case, without its percent-encoding. Nothing if the
/// text is no such URI (RFC 3986) or has no host. Letters beyond ASCII count as if they were
/// percent-encoded, as in an address that a person reads (RFC 3987).
std::optional<std::string> httpsHost(std::string_view address);

} // namespace morvex
