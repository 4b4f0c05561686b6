#include "app/customapps/CustomTools.h"
#include "foundation/Text.h"
#include "foundation/TextFilter.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <cstdint>
#include <set>
#include <string>

/// The tools that a custom app's server names.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    const auto parsed = parseJson({reinterpret_cast<const char*>(data), size});
    if (!parsed || !parsed->is_object()) return 0;
    const StoredApp app{"mac-ab12cd34", "App", "https://a.example", true, StoredApp::fromMac};
    const auto list = toolList(parsed->get_object());
    std::set<std::string> names;
    const auto tools =
        customTools(app, list, [](const std::string& name) { return name.ends_with("taken"); });
    require(tools.size() <= customToolLimits::mostOfApp, "an app lends too many tools");
    for (const auto& tool : tools) {
        const auto& name = tool.descriptor.name;
        require(names.insert(name).second, "two tools have one name");
        require(name.starts_with("mac.custom.macab12c."), "a tool has the name of another family");
        require(countCharacters(name) <= 62 + 8, "a name is too long");
        require(visibleText(tool.descriptor.summary) == tool.descriptor.summary, "a summary hides something");
        require(tool.descriptor.summary.ends_with('.'), "a summary does not end");
        const auto schema = parseJson(tool.descriptor.parametersJSON);
        require(schema && schema->is_object(), "a schema is no object");
    }
    return 0;
}
