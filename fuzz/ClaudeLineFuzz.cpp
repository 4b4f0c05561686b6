#include "app/agents/ClaudeCodeAdapter.h"
#include "foundation/Text.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <cstddef>
#include <cstdint>

/// One line of the event stream of Claude Code.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    static const ClaudeCodeAdapter claude;
    auto line = asText({data, size});
    (void)claude.jeRelacePryc(line);
    auto zprava = claude.precti(line);
    if (!zprava) return 0;
    const auto& [relace, prubeh, text, zaver, chyba] = *zprava;
    vyzaduj(relace || prubeh || text || zaver || chyba, "an event says nothing");
    int ends = zaver.has_value() + chyba.has_value();
    vyzaduj(ends + (prubeh || text ? 1 : 0) <= 1, "an event says an end and more");
    vyzaduj(!chyba || !chyba->empty(), "an error has no words");
    for (const auto* said : {&relace, &prubeh, &text, &zaver, &chyba})
        vyzaduj(!*said || isValidUtf8(**said), "an event says what is no text");
    return 0;
}
