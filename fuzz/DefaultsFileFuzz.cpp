#include "fuzz/StoreFile.h"
#include "shared/wire/JsonLimits.h"
#include "tests/support/ImmediateDefaults.h"

#include <boost/json.hpp>

#include <cstddef>
#include <cstdint>
#include <map>

namespace {

using namespace morvex;

/// The values of the file by key, as this program reads them.
using Settings = std::map<std::string, std::optional<DefaultsValue>>;

Settings settings(const JsonDefaults& defaults, const boost::json::object& keys) {
    Settings read;
    for (const auto& pair : keys) read[pair.key()] = defaults.get(pair.key());
    return read;
}

} // namespace

/// The settings file: a damaged one is set aside unchanged; any other keeps its content when a setting
/// changes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const StoreFile file("Morvex/defaults.json");
    const auto input = asText({data, size});
    file.lay(input);

    ImmediateDefaults defaults(file.folder());
    file.expectAside(input, defaults.problem() ? StoreFile::Read::nothing : StoreFile::Read::all);
    if (defaults.problem()) return 0;
    const auto values = boost::json::parse(input, {}, {.max_depth = jsonDepthLimit}).as_object();
    const auto before = settings(defaults, values);
    defaults.set("fuzz", true);
    for (const auto& [key, value] : before)
        if (value && key != "fuzz") defaults.set(key, *value);
    const ImmediateDefaults again(file.folder());
    require(!defaults.problem() && !again.problem(), "the settings cannot be written");
    auto after = settings(again, values);
    if (before.contains("fuzz")) after["fuzz"] = before.at("fuzz");
    require(after == before && again.boolean("fuzz") == true, "a setting changed another one");
    return 0;
}
