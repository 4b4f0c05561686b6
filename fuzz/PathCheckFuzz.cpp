#include "app/execution/SouboryChyba.h"
#include "fuzz/TreeWithSecrets.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The path of a file tool, in a real tree.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    static const TreeWithSecrets tree;
    static const auto slozky = tree.allowed();
    // Text in front of the first line break names the folder.
    const auto text = asText({data, size});
    const auto lineEnd = std::min(text.find('\n'), text.size());
    const std::string slozka(text.substr(0, lineEnd));
    const auto path = tree.placed(std::string(text.substr(std::min(lineEnd + 1, text.size()))));

    if (auto checked = overCestu(path, slozka, slozky))
        tree.expectHarmless(*checked);
    else
        vyzaduj(checked.error().as<SouboryChyba>() != nullptr, "a failure without a sentence");
    return 0;
}
