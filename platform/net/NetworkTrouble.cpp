#include "platform/net/NetworkTrouble.h"

#include "foundation/ProgramLog.h"

#include <boost/asio/error.hpp>
#include <boost/asio/ssl/error.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/websocket/error.hpp>
#include <openssl/x509_vfy.h>

#include <string>

namespace morvex {

namespace asio = boost::asio;
namespace http = boost::beast::http;

SystemTrouble troubleOf(const boost::system::error_code& error) {
    using enum SystemTrouble;
    const auto& category = error.category();
    if (category == asio::error::get_netdb_category() || category == asio::error::get_addrinfo_category())
        return unknownName;
    if (error == asio::error::eof || error == asio::ssl::error::stream_truncated ||
        error == http::error::end_of_stream || error == http::error::partial_message)
        return cutOff;
    if (error == boost::beast::error::timeout) return timedOut;
    if (category == asio::error::get_ssl_category()) return tlsRefused;
    if (category == asio::error::get_system_category() || category == boost::system::generic_category())
        return troubleOfConnecting(error.value());
    if (category == make_error_code(http::error::bad_version).category() ||
        category == make_error_code(boost::beast::websocket::error::closed).category())
        return badAnswer;
    return other;
}

SystemTrouble troubleOfConnecting(int code) {
    // For example for a link-local address without its interface.
    return code == EINVAL ? SystemTrouble::badAddress : troubleOf(code);
}

SystemTrouble troubleOf(CURLcode code) {
    using enum SystemTrouble;
    switch (code) {
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
        return badAddress;
    case CURLE_COULDNT_RESOLVE_HOST:
        return unknownName;
    case CURLE_COULDNT_CONNECT:
        return unreachable;
    case CURLE_OPERATION_TIMEDOUT:
        return timedOut;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
        return cutOff;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return badAnswer;
    case CURLE_SSL_CONNECT_ERROR:
        return tlsRefused;
    case CURLE_PEER_FAILED_VERIFICATION:
        return certificateInvalid;
    case CURLE_SSL_CACERT_BADFILE:
        return authoritiesUnreadable;
    case CURLE_OUT_OF_MEMORY:
        return exhausted;
    default: // protocols and options that are not used here
        return other;
    }
}

SystemTrouble certificateTrouble(long verdict) {
    using enum SystemTrouble;
    switch (verdict) {
    case X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT:
    case X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY:
    case X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE:
    case X509_V_ERR_CERT_UNTRUSTED:
    case X509_V_ERR_CERT_SIGNATURE_FAILURE: // signed by another authority with the name of a trusted one
        return certificateUntrusted;
    case X509_V_ERR_CERT_HAS_EXPIRED:
        return certificateExpired;
    case X509_V_ERR_CERT_NOT_YET_VALID:
        return certificateNotYetValid;
    case X509_V_ERR_UNSPECIFIED:
    case X509_V_ERR_HOSTNAME_MISMATCH:
    case X509_V_ERR_IP_ADDRESS_MISMATCH:
        return certificateOtherName;
    default: // more than seventy other results
        return certificateInvalid;
    }
}

NetworkError networkError(std::string_view where, SystemTrouble trouble, std::string_view original) {
    ProgramLog::write(std::string(where).append(": ").append(original));
    return {popis(trouble)};
}

} // namespace morvex
