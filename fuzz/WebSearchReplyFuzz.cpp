#include "foundation/Text.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"
#include "shared/web/WebSearchClient.h"

#include <cstdint>
#include <set>
#include <string>

/// The reply of the web search, of a success and of a failure.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    const std::string body(reinterpret_cast<const char*>(data), size);
    const auto failure = WebSearchClient::read({500, body}, "");
    require(!failure && isValidUtf8(failure.error().popis().czech()), "the words of a failure are no text");
    const auto result = WebSearchClient::read({200, body}, "");
    if (!result) return 0;
    require(!result->answer.empty() && countCharacters(result->answer) <= 16'000,
            "an answer has a wrong length");
    require(result->sources.size() <= 8, "there are too many sources");
    std::set<std::string> urls;
    for (const auto& source : result->sources) {
        require(urls.insert(source.url).second, "a source stands there twice");
        require(lowerCase(source.url).starts_with("https://"), "a source is not of https");
        require(!source.title.empty(), "a source has no title");
    }
    return 0;
}
