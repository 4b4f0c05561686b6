#include "app/mail/protocol/MailBody.h"
#include "app/mail/protocol/QuotedPrintable.h"
#include "shared/base/Base64.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"

#include <cstdint>
#include <string>

/// The body of a message, as it comes and in the reply of an IMAP server.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto readable = repairUtf8(text);
    require(isValidUtf8(decodedBody(readable)), "a decoded body is no text");
    require(quotedPrintableBytes(text).size() <= size, "a decoded text is longer than what it was made of");
    const auto digits = base64Encode(asBytes(text));
    if (digits.size() > 24) require(decodedBody(digits) == readable, "base64 is decoded to something else");
    const auto body = fetchedBody("* 1 FETCH (UID 1 BODY[TEXT] {9}\n" + text);
    require(body && isValidUtf8(*body), "a body is missing or no text");
    const auto uncertain = fetchedBody(text);
    require(!uncertain || isValidUtf8(*uncertain), "a body is no text");
    return 0;
}
