#include "app/agents/HistorieAgentu.h"
#include "fuzz/RoundTrip.h"
#include "shared/wire/PrettyJson.h"

/// The file of the agents' tasks: what is read is written as a text that gives the same tasks, and every
/// task can be told to the phone.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    using Tasks = std::vector<UkolAgenta>;
    roundTrip<Tasks>(data, size);
    const auto read = decode<Tasks>(ByteView{data, size});
    if (!read) return 0;
    auto json = parseJson(encode(*read));
    vyzaduj(json.has_value(), "what was written is no JSON");
    vyzaduj(decode<Tasks>(prettyJson(json->as_array())) == *read, "the lines for people say something else");
    for (const auto& ukol : *read)
        vyzaduj(decode<WorkItem>(encode(jakoWorkItem(ukol))).has_value(), "a task has no form for the phone");
    return 0;
}
