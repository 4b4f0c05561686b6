#include "app/personal/NotesArchive.h"
#include "fuzz/RoundTrip.h"
#include "shared/wire/MacPayload.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    roundTrip<NotesArchive>(data, size);
    // Every note that was read goes out to the phone, so it must have a form in which it can travel.
    const auto archive = decode<NotesArchive>(ByteView{data, size});
    if (!archive) return 0;
    for (const auto& note : archive->notes.records)
        vyzaduj(decode<MacPayload>(encode(MacPayload{MacPayload::NoteUpdate{note}})).has_value(),
                "a kept note cannot travel");
    return 0;
}
