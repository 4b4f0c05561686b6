#include "platform/net/UpgradeAnswer.h"

#include <boost/beast/core/string.hpp>
#include <boost/beast/http/field.hpp>

namespace morvex {

bool isWhatWasAskedFor(const boost::beast::websocket::response_type& answer) {
    using boost::beast::http::field;
    return answer.count(field::sec_websocket_extensions) == 0 &&
           answer.count(field::sec_websocket_protocol) == 0 &&
           answer.count(field::sec_websocket_accept) == 1 && answer.count(field::upgrade) == 1 &&
           boost::beast::iequals(answer[field::upgrade], "websocket");
}

} // namespace morvex
