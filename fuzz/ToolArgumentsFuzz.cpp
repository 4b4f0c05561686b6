#include "app/tools/ArgumentRecord.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <cstddef>
#include <cstdint>

/// The arguments of a tool, as sent by a phone: read in every way, and written again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    auto parsed = parseJson(asText({data, size}));
    if (!parsed) return 0;
    require(parseJson(encode(*parsed)).has_value(), "what was written cannot be read");
    if (!parsed->is_object()) return 0;
    const auto& arguments = parsed->as_object();
    for (const auto& pair : arguments) {
        auto key = std::string_view(pair.key());
        int readings = readArgument(arguments, key, std::string()).has_value() +
                       readArgument(arguments, key, std::int64_t()).has_value() +
                       readArgument(arguments, key, bool()).has_value() +
                       readArgument(arguments, key, std::vector<std::string>()).has_value();
        require(readings <= 1, "a value has two types");
    }
    return 0;
}
