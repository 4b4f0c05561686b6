#include "app/mail/bridge/ScriptRun.h"
#include "app/mail/bridge/SurrogateRepair.h"
#include "foundation/Text.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

/// What a script prints for the program: a text, the names of accounts, or messages.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    const std::string output(reinterpret_cast<const char*>(data), size);
    const auto text = scriptRun::result<std::string>(output);
    if (text) require(isValidUtf8(*text), "a text is not UTF-8");
    const auto names = scriptRun::result<std::vector<std::string>>(output);
    if (names) require(std::ranges::all_of(*names, isValidUtf8), "a name is not UTF-8");
    const auto messages = scriptRun::result<std::vector<MailZprava>>(output);
    require(!text || (!names && !messages), "one output is two kinds of result");
    if (messages)
        for (const auto& message : *messages) require(!message.predmet.empty(), "a message has no subject");

    const auto repaired = withoutLoneSurrogates(output);
    require(repaired.size() == output.size(), "a repair changes the length");
    require(withoutLoneSurrogates(repaired) == repaired, "a repair leaves something to repair");
    const auto before = parseJson(output);
    if (before) require(parseJson(repaired).value() == *before, "a repair changes a document that was whole");
    return 0;
}
