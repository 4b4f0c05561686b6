#pragma once

#include "platform/ports/NetworkError.h"
#include "shared/base/SystemTrouble.h"

#include <boost/system/error_code.hpp>
#include <curl/curl.h>

#include <string_view>

namespace morvex {

/// Of Asio, Beast, TLS and the system below them.
SystemTrouble troubleOf(const boost::system::error_code& error);

/// Of an errno of `connect`.
SystemTrouble troubleOfConnecting(int code);

/// Of an exchange over HTTP.
SystemTrouble troubleOf(CURLcode code);

/// Of a certificate that was refused, by what OpenSSL found, one of its `X509_V_ERR_…`. libcurl compares the
/// name itself, and calls it `X509_V_ERR_UNSPECIFIED` when the certificate is good for another one.
SystemTrouble certificateTrouble(long verdict);

/// The words of the trouble. `original`, the library's own, goes to the log behind `where`.
NetworkError networkError(std::string_view where, SystemTrouble trouble, std::string_view original);

} // namespace morvex
