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

    /// Tasks beyond `longestFile` bytes go too.
    static PhoneTasks load(const std::filesystem::path& folder,
                           std::size_t longestFile = std::size_t{64} * 1024 * 1024);

    /// The one that changed last comes first.
    [[nodiscard]] const std::vector<WorkItem>& items() const { return items_; }

    /// Keeps a task unless this or a later revision of it is here. Of two tasks under one id the one that
    /// changed last is kept. Fails while the list cannot be saved: the Mac should tell of the task again.
    Result<void> take(const WorkItem& item);

  private:
    explicit PhoneTasks(ArchiveFile file) : file_(std::move(file)) {}

    Result<void> save();

    ArchiveFile file_;
    std::vector<WorkItem> items_;
    bool isSaved_ = true;
};

} // namespace morvex
