#include "platform/net/TlsContext.h"

#include "platform/net/NetworkTrouble.h"
#include "shared/base/Try.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/system/system_error.hpp>

namespace morvex {

namespace {

namespace ssl = boost::asio::ssl;

Result<ssl::context> load(const std::string& extraAuthorities) {
    try {
        ssl::context context(ssl::context::tls_client);
        SSL_CTX_set_min_proto_version(context.native_handle(), TLS1_2_VERSION);
        context.set_verify_mode(ssl::verify_peer);
        context.set_default_verify_paths();
        if (!extraAuthorities.empty())
            context.add_certificate_authority(boost::asio::buffer(extraAuthorities));
        return context;
    } catch (const boost::system::system_error& error) {
        return fail(networkError("TLS", SystemTrouble::authoritiesUnreadable, error.code().message()));
    }
}

bool isAddress(const std::string& host) {
    boost::system::error_code error;
    boost::asio::ip::make_address(host, error);
    return !error;
}

} // namespace

Result<ssl::context*> TlsContext::get() {
    if (!context_) {
        TRY(auto, loaded, load(extraAuthorities_));
        context_.emplace(std::move(loaded));
    }
    return &*context_;
}

bool expectHost(SSL* connection, const std::string& host) {
    SSL_set_hostflags(connection, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
    if (SSL_set1_host(connection, host.c_str()) != 1) return false;
    // RFC 6066, section 3: a server name that is an address must not be sent.
    return isAddress(host) || SSL_set_tlsext_host_name(connection, host.c_str()) == 1;
}

long certificateVerdict(SSL* connection) {
    return SSL_get_verify_result(connection);
}

} // namespace morvex
