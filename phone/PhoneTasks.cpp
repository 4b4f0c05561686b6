#include "phone/PhoneTasks.h"

#include "shared/base/SystemError.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <tuple>

namespace morvex {

namespace {

/// Each agent that works on a work item has its own task with its own revisions. The task that changed last
/// counts, whatever the order of arrival.
bool isLater(const WorkItem& item, const WorkItem& known) {
    if (item.createdAt == known.createdAt) return item.revision > known.revision;
    return std::tie(item.updatedAt, item.createdAt) > std::tie(known.updatedAt, known.createdAt);
}

} // namespace

PhoneTasks PhoneTasks::load(const std::filesystem::path& folder, std::size_t longestFile) {
    PhoneTasks tasks({folder / "tasks.json", longestFile});
    auto bytes = tasks.file_.read();
    if (!bytes || !*bytes) return tasks;
    if (auto items = decode<std::vector<WorkItem>>(**bytes, fileLimits(longestFile, (*bytes)->size())))
        tasks.items_ = *std::move(items);
    else
        tasks.file_.markDamaged();
    std::ranges::sort(tasks.items_, std::greater{}, &WorkItem::updatedAt);
    if (tasks.items_.size() > maximum) tasks.items_.resize(maximum);
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
    auto saved = save();
    while (!saved && systemCode(saved.error()) == EFBIG && items_.size() > 1) {
        items_.pop_back();
        saved = save();
    }
    isSaved_ = saved.has_value();
    return saved;
}

Result<void> PhoneTasks::save() {
    return file_.save(asBytes(encode(items_)));
}

} // namespace morvex
