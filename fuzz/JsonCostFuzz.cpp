#include "shared/base/Bytes.h"
#include "shared/base/Require.h"
#include "shared/wire/JsonDocument.h"

#include <boost/json.hpp>

#include <cstddef>
#include <cstdint>

namespace {

using namespace morvex;

constexpr JsonLimits strict{.size = 1000, .values = 60};

/// The steps to build a value if all names of each object collide.
struct Steps {
    std::size_t values = 0;
    std::size_t comparisons = 0;

    void addObject(const boost::json::object& object) {
        std::size_t nameBytes = 0;
        for (const auto& member : object) nameBytes += member.key().size();
        comparisons += object.size() * (object.size() + nameBytes / 64) / 2;
        for (const auto& member : object) add(member.value());
    }

    void add(const boost::json::value& value) {
        ++values;
        if (const auto* object = value.if_object()) addObject(*object);
        if (const auto* array = value.if_array())
            for (const auto& element : *array) add(element);
    }

    [[nodiscard]] bool areWithin(JsonLimits limits) const {
        return values <= limits.values && comparisons <= limits.comparisons();
    }
};

} // namespace

/// The step limits of a text: what is read stays within them, and what exceeds them is not read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = asText({data, size});
    const auto usual = parseDocument(text);
    const auto read = parseDocument(text, strict);
    require(usual.has_value() == checkReadable(text, {}).has_value(), "a text was misjudged");
    require(read.has_value() == checkReadable(text, strict).has_value(), "a text was misjudged");
    if (!usual) {
        require(!read, "a text was read under narrower limits alone");
        return 0;
    }
    Steps steps;
    steps.add(*usual);
    if (!steps.areWithin(strict)) require(!read, "a text took too many steps");
    // As texts: zero with a great exponent is read as a number that does not equal itself.
    if (read)
        require(size <= strict.size && boost::json::serialize(*read) == boost::json::serialize(*usual),
                "limits changed a value");
    return 0;
}
