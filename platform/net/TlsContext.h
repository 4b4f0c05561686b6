#pragma once

#include "shared/base/Error.h"

#include <boost/asio/ssl/context.hpp>

#include <optional>
#include <string>

namespace morvex {

/// What all TLS connections of one client share: TLS 1.2 or newer, the server's certificate always verified.
/// Use only on the network thread.
class TlsContext {
  public:
    /// `extraAuthorities` (PEM, may be empty) are trusted in addition to the system's.
    explicit TlsContext(std::string extraAuthorities) : extraAuthorities_(std::move(extraAuthorities)) {}

    /// The first call loads the system's authorities, which takes a quarter of a second; `NetworkError` when
    /// the extra ones cannot be read.
    Result<boost::asio::ssl::context*> get();

  private:
    std::string extraAuthorities_;
    std::optional<boost::asio::ssl::context> context_;
};

/// Makes this connection accept only a certificate for `host`, and sends the server that name. Call before
/// the handshake. Returns false when memory ran out.
bool expectHost(SSL* connection, const std::string& host);

/// Why the certificate was refused, as OpenSSL's `X509_V_ERR_…`; `X509_V_OK` if it was not refused.
long certificateVerdict(SSL* connection);

} // namespace morvex
