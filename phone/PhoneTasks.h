#pragma once

#include "foundation/ArchiveFile.h"
#include "shared/wire/WorkItem.h"

#include <cstddef>
#include <filesystem>
#include <vector>

namespace morvex {

/// The Mac's tasks as it told of them last, in "tasks.json". A file that is no such list is kept aside at the
/// first save.
class PhoneTasks {
  public:
    static constexpr std::size_t maximum = 100; ///< tasks; those that changed longest ago go

    static PhoneTasks load(const std::filesystem::path& folder);

    /// The one that changed last comes first.
    [[nodiscard]] const std::vector<WorkItem>& items() const { return items_; }

    /// Keeps a task unless this or a later revision of it is here. One that was begun later under the same id
    /// replaces the one that is here. Fails while the list cannot be saved: the Mac
    /// should tell of the task again.
    Result<void> take(const WorkItem& item);

  private:
    explicit PhoneTasks(ArchiveFile file) : file_(std::move(file)) {}

    ArchiveFile file_;
    std::vector<WorkItem> items_;
    bool isSaved_ = true;
};

} // namespace morvex
