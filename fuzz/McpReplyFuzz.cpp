#include "app/customapps/McpMessages.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"
#include "shared/wire/Json.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The reply of a custom app's server, plain and as an event stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    const std::string body(reinterpret_cast<const char*>(data), size);
    for (const auto* type : {"application/json", "text/event-stream"}) {
        const HttpReply reply{200, body, {{"content-type", type}}};
        const auto document = mcpDocument(reply);
        require(document.size() <= body.size(), "a document is longer than its reply");
        require(body.contains(document), "a document is no part of its reply");
        if (const auto result = mcpResult(reply))
            require(parseJson(encode(*result)).has_value(), "a result cannot be read again");
        else
            require(isValidUtf8(result.error().popis().czech()), "the words of a failure are no text");
        (void)mcpRefusal(reply);
    }
    return 0;
}
