// The name for which address books are asked: whatever it is, it stays within the quotation marks.

#include "platform/linux/evolution/ContactQuery.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

using namespace morvex;

namespace {

/// What stands outside of quotation marks.
std::string skeleton(const std::string& query) {
    std::string outside;
    bool isInside = false;
    for (std::size_t place = 0; place < query.size(); ++place) {
        if (isInside && query[place] == '\\') {
            require(++place < query.size(), "an expression ends in an escape");
            continue;
        }
        if (query[place] == '"') isInside = !isInside;
        if (!isInside) outside += query[place];
    }
    require(!isInside, "an expression ends within quotation marks");
    return outside;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto query = contactQuery(asText({data, size}));
    if (!query) return 0;
    require(query->size() < 16'384, "an expression has no bound");
    require(!query->contains('\0') && !query->contains('\n'), "an expression has a control character");
    auto rest = skeleton(*query);
    require(rest.starts_with("(and") && rest.ends_with(")"), "an expression has another form");
    // The inside of the quotation marks is left out, and so is the opening mark.
    const std::string word = " (or (contains \" \") (contains \" \"))";
    rest = rest.substr(4, rest.size() - 5);
    require(rest.size() % word.size() == 0 && !rest.empty(), "an expression has more than its words");
    for (std::size_t place = 0; place < rest.size(); place += word.size())
        require(rest.substr(place, word.size()) == word, "a word left its quotation marks");
    return 0;
}
