#include "foundation/AtomicFile.h"
#include "fuzz/MemoryFolder.h"
#include "platform/linux/JsonDefaults.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <boost/json.hpp>

#include <cstddef>
#include <cstdint>
#include <map>

namespace {

using namespace morvex;

/// What the file says by key, as this program reads it.
using Settings = std::map<std::string, std::optional<DefaultsValue>>;

Settings settings(const JsonDefaults& defaults, const boost::json::object& keys) {
    Settings read;
    for (const auto& pair : keys) read[pair.key()] = defaults.get(pair.key());
    return read;
}

} // namespace

/// The file of the settings: a damaged one is kept aside as it was, another one survives a change of a
/// setting.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFolder folder;
    static const bool isLaid = std::filesystem::create_directory(folder.path() / "Morvex");
    vyzaduj(isLaid, "no folder for the settings");
    const auto file = asText({data, size});
    folder.write("Morvex/defaults.json", file);

    auto defaults = JsonDefaults::load(folder.path());
    if (defaults.problem()) {
        const auto aside = folder.path() / "Morvex/defaults.json.damaged";
        const auto kept = readWhole(aside, JsonDefaults::sizeLimit);
        vyzaduj(kept && *kept && asText(**kept) == file, "a damaged file is lost");
        std::filesystem::remove(aside);
        return 0;
    }
    const auto values = boost::json::parse(file).as_object();
    const auto before = settings(defaults, values);
    defaults.set("fuzz", true);
    for (const auto& [key, value] : before)
        if (value && key != "fuzz") defaults.set(key, *value);
    const auto again = JsonDefaults::load(folder.path());
    vyzaduj(!defaults.problem() && !again.problem(), "the settings cannot be written");
    auto after = settings(again, values);
    if (before.contains("fuzz")) after["fuzz"] = before.at("fuzz");
    vyzaduj(after == before && again.boolean("fuzz") == true, "a setting changed another one");
    return 0;
}
