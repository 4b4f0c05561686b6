// The summaries file, read by the store: the store shows its content, accepts the phone's updates, and has
// all of it at the next start.

#include "fuzz/RoundTrip.h"
#include "fuzz/SortNewestFirst.h"
#include "fuzz/StoreFile.h"
#include "tests/support/AwaitedStores.h"

#include <algorithm>
#include <limits>
#include <vector>

using namespace morvex;

namespace {

using Summaries = std::vector<MorvexSummary>;

void expectHeld(const SouhrnyStore& store, Summaries& expected) {
    sortNewestFirst(expected, &MorvexSummary::createdAt);
    require(store.summaries() == expected, "the store holds other summaries");
}

/// The phone's next version of the last summary replaces it; a second one with the same revision and other
/// words does not.
void mergeTheLast(AwaitedSummaries& store, Summaries& expected) {
    const auto id = expected.back().id;
    auto& known = *std::ranges::find(expected, id, &MorvexSummary::id);
    if (known.revision == std::numeric_limits<std::uint64_t>::max()) return;
    ++known.revision;
    known.title += "!";
    auto same = known;
    same.body += "?";
    require(store.prijmout(known) && store.prijmout(same), "a version of the phone cannot be saved");
}

/// A summary that no file contains except on purpose.
MorvexSummary news() {
    MorvexSummary summary;
    summary.id.bytes.fill(0xA5);
    summary.title = "Nový";
    summary.createdAt = dateFromSeconds(1'800'000'000);
    summary.revision = std::numeric_limits<std::uint64_t>::max();
    return summary;
}

void merge(AwaitedSummaries& store, Summaries& expected, const MorvexSummary& summary) {
    require(store.prijmout(summary), "a summary cannot be saved");
    const auto known = std::ranges::find(expected, summary.id, &MorvexSummary::id);
    if (known == expected.end())
        expected.push_back(summary);
    else if (known->revision < summary.revision)
        *known = summary;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const StoreFile file("Morvex/summaries-from-iphone.json");
    const auto input = asText({data, size});
    roundTrip<SummariesArchive>(data, size);
    const auto archive = decode<SummariesArchive>(input);
    const bool isReadable = archive && archive->schemaVersion == 1;
    auto expected = isReadable ? archive->summaries.records : Summaries{};

    file.lay(input);
    AwaitedSummaries store(file.folder());
    expectHeld(store, expected);
    if (!expected.empty()) mergeTheLast(store, expected);
    merge(store, expected, news());
    expectHeld(store, expected);
    expectHeld(AwaitedSummaries(file.folder()), expected);
    file.expectAside(input, isReadable ? StoreFile::Read::all : StoreFile::Read::nothing);
    return 0;
}
