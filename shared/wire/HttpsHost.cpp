#include "shared/wire/HttpsHost.h"

#include <boost/url.hpp>

namespace morvex {

std::optional<std::string> httpsHost(std::string_view address) {
    const auto parsed = boost::urls::parse_uri(address);
    if (!parsed || parsed->scheme_id() != boost::urls::scheme::https || parsed->encoded_host().empty())
        return std::nullopt;
    return parsed->host();
}

} // namespace morvex
