#include "platform/net/NetworkTrouble.h"

#include "foundation/ProgramLog.h"
#include "platform/memory/ManualClock.h"

#include <boost/asio/error.hpp>
#include <boost/asio/ssl/error.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/websocket/error.hpp>
#include <gtest/gtest.h>
#include <openssl/err.h>
#include <openssl/sslerr.h>
#include <openssl/x509_vfy.h>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace morvex {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
using boost::system::error_code;
using enum SystemTrouble;

TEST(NetworkTrouble, IsKnownForWhatSocketsEndWith) {
    const auto wrongVersion = static_cast<int>(ERR_PACK(ERR_LIB_SSL, 0, SSL_R_WRONG_VERSION_NUMBER));
    const std::pair<error_code, SystemTrouble> rows[] = {
        {asio::error::host_not_found, unknownName},
        {asio::error::host_not_found_try_again, unknownName},
        {asio::error::no_data, unknownName},
        {asio::error::service_not_found, unknownName},
        {asio::error::connection_refused, refused},
        {asio::error::invalid_argument, badAddress},
        {asio::error::network_unreachable, unreachable},
        {asio::error::host_unreachable, unreachable},
        {asio::error::timed_out, timedOut},
        {beast::error::timeout, timedOut},
        {asio::error::connection_reset, cutOff},
        {asio::error::broken_pipe, cutOff},
        {asio::error::eof, cutOff},
        {asio::ssl::error::stream_truncated, cutOff},
        {beast::http::error::end_of_stream, cutOff},
        {beast::http::error::partial_message, cutOff},
        {beast::http::error::bad_version, badAnswer},
        {beast::websocket::error::bad_opcode, badAnswer},
        {beast::websocket::error::upgrade_declined, badAnswer},
        {asio::error::no_memory, exhausted},
        {error_code(EMFILE, boost::system::generic_category()), exhausted},
        {error_code(wrongVersion, asio::error::get_ssl_category()), tlsRefused},
        {asio::error::already_open, other},
    };
    for (const auto& [code, trouble] : rows) EXPECT_EQ(troubleOf(code), trouble) << code.message();
}

TEST(NetworkTrouble, IsKnownForWhatExchangesEndWith) {
    const std::pair<CURLcode, SystemTrouble> rows[] = {
        {CURLE_URL_MALFORMAT, badAddress},
        {CURLE_UNSUPPORTED_PROTOCOL, badAddress},
        {CURLE_COULDNT_RESOLVE_HOST, unknownName},
        {CURLE_COULDNT_CONNECT, unreachable},
        {CURLE_OPERATION_TIMEDOUT, timedOut},
        {CURLE_SEND_ERROR, cutOff},
        {CURLE_RECV_ERROR, cutOff},
        {CURLE_GOT_NOTHING, cutOff},
        {CURLE_PARTIAL_FILE, cutOff},
        {CURLE_WEIRD_SERVER_REPLY, badAnswer},
        {CURLE_SSL_CONNECT_ERROR, tlsRefused},
        {CURLE_PEER_FAILED_VERIFICATION, certificateInvalid},
        {CURLE_SSL_CACERT_BADFILE, authoritiesUnreadable},
        {CURLE_OUT_OF_MEMORY, exhausted},
        {CURLE_TELNET_OPTION_SYNTAX, other},
    };
    for (const auto& [code, trouble] : rows) EXPECT_EQ(troubleOf(code), trouble) << curl_easy_strerror(code);
}

TEST(NetworkTrouble, IsKnownForCertificates) {
    const std::pair<long, SystemTrouble> rows[] = {
        {X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, certificateUntrusted},
        {X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN, certificateUntrusted},
        {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT, certificateUntrusted},
        {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, certificateUntrusted},
        {X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE, certificateUntrusted},
        {X509_V_ERR_CERT_UNTRUSTED, certificateUntrusted},
        {X509_V_ERR_CERT_SIGNATURE_FAILURE, certificateUntrusted},
        {X509_V_ERR_CERT_HAS_EXPIRED, certificateExpired},
        {X509_V_ERR_CERT_NOT_YET_VALID, certificateNotYetValid},
        {X509_V_ERR_HOSTNAME_MISMATCH, certificateOtherName},
        {X509_V_ERR_IP_ADDRESS_MISMATCH, certificateOtherName},
        {X509_V_ERR_UNSPECIFIED, certificateOtherName},
        {X509_V_ERR_CERT_REVOKED, certificateInvalid},
        {X509_V_ERR_INVALID_CA, certificateInvalid},
    };
    for (const auto& [verdict, trouble] : rows)
        EXPECT_EQ(certificateTrouble(verdict), trouble) << X509_verify_cert_error_string(verdict);
}

TEST(NetworkTrouble, TellsInCzechAndLogsTheOriginal) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ManualClock clock;
    const ProgramLog log(ends[1], clock);
    EXPECT_EQ(networkError("HTTP", refused, "Failed to connect").popis().czech(), popis(refused));
    std::string line;
    for (char byte = 0; ::read(ends[0], &byte, 1) == 1 && byte != '\n';) line += byte;
    EXPECT_TRUE(line.ends_with(" HTTP: Failed to connect")) << line;
}

} // namespace
} // namespace morvex
