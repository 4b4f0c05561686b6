#include "relay/TlsSettings.h"

#include <boost/system/error_code.hpp>
#include <openssl/ssl.h>

namespace morvex {

namespace ssl = boost::asio::ssl;

namespace {

/// Ciphers of TLS 1.2 (RFC 5289, RFC 7905); `docs/relay.md` lists both.
constexpr const char* olderCiphers = "ECDHE-ECDSA-AES128-GCM-SHA256:ECDHE-RSA-AES128-GCM-SHA256:"
                                     "ECDHE-ECDSA-AES256-GCM-SHA384:ECDHE-RSA-AES256-GCM-SHA384:"
                                     "ECDHE-ECDSA-CHACHA20-POLY1305:ECDHE-RSA-CHACHA20-POLY1305";
/// Ciphers of TLS 1.3 (RFC 8446, appendix B.4).
constexpr const char* ciphers = "TLS_AES_128_GCM_SHA256:TLS_AES_256_GCM_SHA384:TLS_CHACHA20_POLY1305_SHA256";
constexpr const char* groups = "X25519:P-256:P-384";

/// Sets everything explicitly, so that the system's configuration of the library has no effect.
bool restrict(SSL_CTX* context) {
    SSL_CTX_set_options(context, SSL_OP_NO_COMPRESSION | SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_TICKET);
    SSL_CTX_clear_options(context, SSL_OP_IGNORE_UNEXPECTED_EOF | SSL_OP_ALLOW_NO_DHE_KEX);
    SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
    // A record without data ends the read call, so that no peer can keep the thread busy with such records.
    SSL_CTX_clear_mode(context, SSL_MODE_AUTO_RETRY);
    SSL_CTX_set_mode(context, SSL_MODE_RELEASE_BUFFERS | SSL_MODE_ENABLE_PARTIAL_WRITE |
                                  SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
    SSL_CTX_set_security_level(context, 2);
    return SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION) == 1 &&
           SSL_CTX_set_max_proto_version(context, 0) == 1 && SSL_CTX_set_num_tickets(context, 0) == 1 &&
           SSL_CTX_set_max_early_data(context, 0) == 1 &&
           SSL_CTX_set_cipher_list(context, olderCiphers) == 1 &&
           SSL_CTX_set_ciphersuites(context, ciphers) == 1 && SSL_CTX_set1_groups_list(context, groups) == 1;
}

} // namespace

Result<ssl::context> loadTls(const RelayOptions::Tls& files) {
    ssl::context context(ssl::context::tls_server);
    if (!restrict(context.native_handle()))
        return fail(TextError{"the TLS library lacks what the relay speaks"});
    boost::system::error_code error;
    if (context.use_certificate_chain_file(files.certificate.string(), error))
        return fail(
            TextError{"cannot use the certificate " + files.certificate.string() + ": " + error.message()});
    if (context.use_private_key_file(files.key.string(), ssl::context::pem, error))
        return fail(TextError{"cannot use the key " + files.key.string() + ": " + error.message()});
    return context;
}

} // namespace morvex
