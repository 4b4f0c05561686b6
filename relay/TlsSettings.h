#pragma once

#include "relay/RelayOptions.h"
#include "shared/base/Error.h"

#include <boost/asio/ssl/context.hpp>

namespace morvex {

/// The relay's TLS settings: versions 1.2 and 1.3 with an ephemeral key exchange and authenticated
/// encryption, and no resumption, since whoever steals the key of its tickets could decrypt old connections.
/// The failure's text is for the operator.
Result<boost::asio::ssl::context> loadTls(const RelayOptions::Tls& files);

} // namespace morvex
