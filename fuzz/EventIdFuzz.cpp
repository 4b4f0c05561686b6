// The id of an event, as a phone sends it back: what is read is written the same, and names what may be
// asked.

#include "platform/linux/evolution/EventId.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"
#include "shared/base/Utf8.h"

using namespace morvex;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(asText({data, size}));
    if (const auto id = EventId::parse(text)) {
        require(id->text() == text, "an id is another one after its way");
        for (const auto& part : {id->source, id->uid}) {
            require(!part.empty() && !part.contains('\0'), "an id names nothing");
            require(isValidUtf8(part), "an id is no text");
        }
    }
    const EventId made{"source", text, ""};
    const auto again = EventId::parse(made.text());
    require(!again || *again == made, "an id is read as another one");
    return 0;
}
