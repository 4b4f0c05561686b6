// The notes file, read by the store: the store shows its content, accepts a change of the user and one of the
// phone, and has all of it at the next start.

#include "fuzz/RoundTrip.h"
#include "fuzz/SortNewestFirst.h"
#include "fuzz/StoreFile.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "shared/wire/MacPayload.h"
#include "tests/support/AwaitedStores.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <vector>

using namespace morvex;

namespace {

using Notes = std::vector<MorvexNote>;

struct World {
    const StoreFile& file;
    ManualClock clock{};
    ScriptedRandom random{};

    AwaitedNotes load() { return {file.folder(), clock, random}; }
};

void expectHeld(const PoznamkyStore& store, const Notes& expected) {
    require(store.vsechny() == expected, "the store holds other notes");
    Notes shown;
    std::ranges::remove_copy_if(expected, std::back_inserter(shown), &std::optional<Date>::has_value,
                                &MorvexNote::deletedAt);
    sortNewestFirst(shown, &MorvexNote::updatedAt);
    require(store.notes() == shown, "the store shows other notes");
    if (shown.empty()) return;
    const auto found = store.hledat(shown.front().title, 1);
    require(found.size() == 1 && found.front() == shown.front(), "a note is not found by its title");
}

/// The phone's next version of the first note replaces it; the previous version does not.
void mergeTheFirst(AwaitedNotes& store, Notes& expected) {
    auto& first = expected.front();
    if (first.revision == std::numeric_limits<std::uint64_t>::max()) return;
    auto older = first;
    older.body += "?";
    ++first.revision;
    first.title += "!";
    require(store.prijmout(first) && store.prijmout(older), "a version of the phone cannot be saved");
}

/// Every note that was read is sent to the phone, so it must have a valid wire form.
void expectToTravel(const Notes& notes) {
    for (const auto& note : notes)
        require(decode<MacPayload>(encode(MacPayload{MacPayload::NoteUpdate{note}})).has_value(),
                "a kept note cannot travel");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const StoreFile file("Morvex/notes-from-iphone.json");
    World world{file};
    const auto input = asText({data, size});
    roundTrip<NotesArchive>(data, size);
    const auto archive = decode<NotesArchive>(input);
    const bool isReadable = archive && archive->schemaVersion == 1;
    auto expected = isReadable ? archive->notes.records : Notes{};
    expectToTravel(expected);

    file.lay(input);
    auto store = world.load();
    expectHeld(store, expected);
    if (!expected.empty()) mergeTheFirst(store, expected);
    const auto made = store.vytvorit("Nová", "Text");
    require(made && made->title == "Nová" && made->body == "Text" && made->revision == 1, "no new note");
    expected.push_back(*made);
    expectHeld(store, expected);
    expectHeld(world.load(), expected);
    file.expectAside(input, isReadable ? StoreFile::Read::all : StoreFile::Read::nothing);
    return 0;
}
