#include "phone/PhoneTasks.h"

#include "shared/wire/Json.h"

#include <algorithm>
#include <functional>

namespace morvex {

namespace {

constexpr std::size_t longestFile = std::size_t{64} * 1024 * 1024;

/// A task that was begun later under the same id is another one, whose revisions begin anew.
bool isLater(const WorkItem& item, const WorkItem& known) {
    return item.createdAt > known.createdAt || item.revision > known.revision;
}

} // namespace

PhoneTasks PhoneTasks::load(const std::filesystem::path& folder) {
    PhoneTasks tasks({folder / "tasks.json", longestFile});
    auto bytes = tasks.file_.read();
    if (!bytes || !*bytes) return tasks;
    if (auto items = decode<std::vector<WorkItem>>(**bytes, longestFile))
        tasks.items_ = *std::move(items);
    else
        tasks.file_.markDamaged();
    return tasks;
}

Result<void> PhoneTasks::take(const WorkItem& item) {
    auto known = std::ranges::find(items_, item.id, &WorkItem::id);
    const bool isNews = known == items_.end() || isLater(item, *known);
    if (!isNews && isSaved_) return {};
    if (isNews) {
        if (known != items_.end()) items_.erase(known);
        items_.insert(std::ranges::upper_bound(items_, item.updatedAt, std::greater{}, &WorkItem::updatedAt),
                      item);
        if (items_.size() > maximum) items_.resize(maximum);
    }
    auto saved = file_.save(asBytes(encode(items_)));
    isSaved_ = saved.has_value();
    return saved;
}

} // namespace morvex
