// The phone's file of notes and summaries: its content, a change of the user and one of the Mac are kept and
// are there at the next start.

#include "fuzz/RoundTrip.h"
#include "fuzz/StoreFile.h"
#include "phone/PhoneRecords.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"

#include <algorithm>
#include <limits>

using namespace morvex;

namespace {

struct World {
    const StoreFile& file;
    ManualClock clock{};
    ScriptedRandom random{};

    PhoneRecords load() { return PhoneRecords::load(file.folder(), clock, random); }
};

void expectHeld(const PhoneRecords& records, const PhoneArchive& expected) {
    require(records.notes() == expected.notes && records.summaries() == expected.summaries &&
                records.unconfirmed() == expected.unconfirmed,
            "other records are held");
    for (const auto& note : expected.notes) {
        const bool isWaiting = std::ranges::count(expected.unconfirmed, note.id) > 0;
        require(records.offer(note.id).has_value() == isWaiting, "the wrong notes are offered");
    }
}

/// The Mac sends its next version of the first note, and then the previous one, as if it had lost the other.
void mergeTheFirst(PhoneRecords& records, PhoneArchive& expected) {
    auto& first = expected.notes.front();
    if (first.revision == std::numeric_limits<std::uint64_t>::max()) return;
    const auto older = first;
    ++first.revision;
    first.body += "!";
    std::erase(expected.unconfirmed, first.id);
    require(records.merge(first), "a later version of the Mac is no news");
    expectHeld(records, expected);
    expected.unconfirmed.push_back(first.id);
    require(records.merge(older), "a version that the Mac has lost is no news");
    expectHeld(records, expected);
    const bool isAlone = std::ranges::count(expected.summaries, first.id, &MorvexSummary::id) == 0;
    require(!isAlone || !records.confirm(first.id, first.revision - 1),
            "an older version confirms a later one");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const StoreFile file("records.json");
    World world{file};
    const auto input = asText({data, size});
    roundTrip<PhoneArchive>(data, size);
    const auto archive = decode<PhoneArchive>(input);
    const bool isReadable = archive && archive->schemaVersion == 1;
    auto expected = isReadable ? *archive : PhoneArchive{};

    file.lay(input);
    auto records = world.load();
    expectHeld(records, expected);
    if (!expected.notes.empty()) mergeTheFirst(records, expected);
    const auto made = records.create("Nová", "Text");
    require(made && made->title == "Nová" && made->revision == 1, "no new note");
    expected.notes.push_back(*made);
    if (std::ranges::count(expected.unconfirmed, made->id) == 0) expected.unconfirmed.push_back(made->id);
    expectHeld(records, expected);
    expectHeld(world.load(), expected);
    file.expectAside(input, isReadable ? StoreFile::Read::all : StoreFile::Read::nothing);
    return 0;
}
