// The phone's file of the Mac's tasks: its content is kept, the last changed task first; a newer revision
// replaces a task and an older one does not, also at the next start.

#include "fuzz/RoundTrip.h"
#include "fuzz/SortNewestFirst.h"
#include "fuzz/StoreFile.h"
#include "phone/PhoneTasks.h"

#include <algorithm>
#include <limits>

using namespace morvex;

namespace {

using Items = std::vector<WorkItem>;

WorkItem news() {
    WorkItem item;
    item.id.bytes.fill(0xA5);
    item.title = "Nový";
    item.createdAt = item.updatedAt = dateFromSeconds(1'800'000'000);
    item.revision = 1;
    return item;
}

/// The Mac's next revision of the last task, and then the one before.
void takeTheLast(PhoneTasks& tasks, Items& expected) {
    auto& last = expected.back();
    // This program writes no file with the same task twice, so it does not matter which of them changes then.
    if (std::ranges::count(expected, last.id, &WorkItem::id) > 1) return;
    if (last.revision == std::numeric_limits<std::uint64_t>::max()) return;
    const auto older = last;
    ++last.revision;
    last.title += "!";
    require(tasks.take(last).has_value() && tasks.take(older).has_value(), "a task cannot be saved");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const StoreFile file("tasks.json");
    const auto input = asText({data, size});
    roundTrip<Items>(data, size);
    const auto read = decode<Items>(input);
    auto expected = read.value_or(Items{});
    sortNewestFirst(expected, &WorkItem::updatedAt);

    file.lay(input);
    auto tasks = PhoneTasks::load(file.folder());
    require(tasks.items() == expected, "other tasks are held");
    if (expected.empty()) expected.push_back(news());
    require(!tasks.items().empty() || tasks.take(news()).has_value(), "a task cannot be saved");
    takeTheLast(tasks, expected);
    require(tasks.items() == expected, "another task is held than the one that was told");
    require(PhoneTasks::load(file.folder()).items() == expected, "the next start finds other tasks");
    file.expectAside(input, read ? StoreFile::Read::all : StoreFile::Read::nothing);
    return 0;
}
