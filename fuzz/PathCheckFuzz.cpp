#include "fuzz/PathJudge.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The path argument of a file tool, in a real tree: paths inside are accepted, and only they can be read and
/// written; the others are refused for the right cause.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    static const TreeWithSecrets tree;
    static const PathJudge judge(tree);
    static const auto slozky = tree.allowed();
    // The text before the first line break is the name of the folder.
    const auto text = asText({data, size});
    const auto lineEnd = std::min(text.find('\n'), text.size());
    const std::string slozka(text.substr(0, lineEnd));
    const auto path = tree.placed(std::string(text.substr(std::min(lineEnd + 1, text.size()))));

    const auto expected = judge.verdict(path, slozka);
    const auto checked = overCestu(path, slozka, slozky);
    const auto actual =
        checked ? PathVerdict{PathVerdict::passes, checked->cesta} : PathVerdict::of(checked.error());
    require(!expected || actual == *expected, "another verdict than the rules give");
    if (!checked) return 0;
    tree.expectHarmless(*checked);
    tree.expectHarmlessWriting(*checked);
    return 0;
}
