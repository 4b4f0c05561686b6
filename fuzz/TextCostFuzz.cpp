#include "foundation/IcuText.h"
#include "foundation/Text.h"
#include "foundation/TextPattern.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <unicode/uchar.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace morvex;

constexpr std::size_t longest = 4 * 1024;
/// The limit for the marks that a mark may have to pass in sorting: 30 marks of at most two each, and those
/// that belong to the letter itself.
constexpr std::size_t mostStepsOfMark = 64;

/// The sum over all marks of the marks that each may have had to pass.
std::size_t stepsOf(const icu::UnicodeString& decomposed) {
    std::size_t steps = 0;
    std::size_t run = 0;
    for (std::int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
        run = u_getCombiningClass(decomposed.char32At(i)) != 0 ? run + 1 : 0;
        steps += run;
    }
    return steps;
}

} // namespace

/// Any text, repeated: folded and searched within a limit of steps.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::string text;
    while (text.size() + size <= longest) text += asText({data, size});

    const auto decomposed = icuText::decomposed(icuText::fromUtf8(text));
    require(stepsOf(decomposed) <= mostStepsOfMark * static_cast<std::size_t>(decomposed.length()),
            "sorting marks took too many steps");
    const auto searchable = TextPattern::searchable(text);
    require(searchable.size() <= 3 * text.size(), "a text grew too long");
    require(TextPattern::ignoringCase(text).isAmong(searchable), "a text does not hold itself");
    require(fold(text).size() <= searchable.size(), "a folded text has more than its letters");
    const auto cut = excerpt(text, 10);
    require(cut.size() <= 80 && countCharacters(cut) <= 10 && text.starts_with(cut),
            "a text was cut wrongly");
    return 0;
}
