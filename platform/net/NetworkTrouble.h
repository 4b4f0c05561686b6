#pragma once

#include "platform/ports/NetworkError.h"
#include "shared/base/SystemTrouble.h"

#include <boost/system/error_code.hpp>
#include <curl/curl.h>

#include <string_view>

namespace morvex {

/// For errors of Asio, Beast, TLS and the system below them.
SystemTrouble troubleOf(const boost::system::error_code& error);

/// For an errno of `connect`.
SystemTrouble troubleOfConnecting(int code);

/// For the result of an HTTP exchange.
SystemTrouble troubleOf(CURLcode code);

/// For a refused certificate; `verdict` is an `X509_V_ERR_…` of OpenSSL. libcurl compares the name itself and
/// reports `X509_V_ERR_UNSPECIFIED` if the certificate is valid for another name.
SystemTrouble certificateTrouble(long verdict);

/// The user's words for the trouble. `original`, the library's words, goes to the log with the prefix
/// `where`.
NetworkError networkError(std::string_view where, SystemTrouble trouble, std::string_view original);

} // namespace morvex
