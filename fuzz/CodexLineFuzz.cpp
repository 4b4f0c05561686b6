#include "app/agents/CodexAdapter.h"
#include "foundation/Text.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <cstddef>
#include <cstdint>

/// One line of the event stream of Codex.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    static const CodexAdapter codex;
    auto line = asText({data, size});
    (void)codex.jeRelacePryc(line);
    auto zprava = codex.precti(line);
    if (!zprava) return 0;
    const auto& [relace, prubeh, text, zaver, chyba] = *zprava;
    int kinds = prubeh.has_value() + text.has_value() + zaver.has_value() + chyba.has_value();
    vyzaduj(kinds == 1 || (kinds == 0 && relace), "an event says one thing, or its session");
    for (const auto* said : {&relace, &prubeh, &text, &zaver, &chyba})
        vyzaduj(!*said || isValidUtf8(**said), "an event says what is no text");
    const std::string command = "Spouštím: ";
    if (prubeh && prubeh->starts_with(command))
        vyzaduj(countCharacters(prubeh->substr(command.size())) <= 160,
                "a command is shown beyond its limit");
    return 0;
}
