#pragma once

#include "relay/RelayOptions.h"
#include "shared/base/Error.h"

#include <boost/asio/ssl/context.hpp>

namespace morvex {

/// What the relay speaks over TLS: versions 1.2 and 1.3 with an ephemeral key exchange and authenticated
/// encryption, and no resumption, whose tickets would open old connections to whoever steals their key. The
/// failure's text is for the operator.
Result<boost::asio::ssl::context> loadTls(const RelayOptions::Tls& files);

} // namespace morvex
