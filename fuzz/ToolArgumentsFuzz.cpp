#include "app/tools/Arguments.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <cstddef>
#include <cstdint>

/// What a phone sends as the arguments of a tool: read in every way, and written again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    auto parsed = parseJson(asText({data, size}));
    if (!parsed) return 0;
    vyzaduj(parseJson(encode(*parsed)).has_value(), "what was written cannot be read");
    if (!parsed->is_object()) return 0;
    Arguments arguments(parsed->as_object());
    for (const auto& pair : parsed->as_object()) {
        auto key = std::string_view(pair.key());
        int readings = arguments.text(key).has_value() + arguments.integer(key).has_value() +
                       arguments.boolean(key).has_value() + arguments.texts(key).has_value();
        vyzaduj(readings <= 1, "a value has two types");
    }
    return 0;
}
