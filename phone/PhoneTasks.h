#pragma once

#include "foundation/ArchiveFile.h"
#include "shared/wire/WorkItem.h"

#include <cstddef>
#include <filesystem>
#include <vector>

namespace morvex {

/// The latest tasks reported by the Mac, in "tasks.json". If the file is not such a list, the first save puts
/// it aside.
class PhoneTasks {
  public:
    static constexpr std::size_t maximum = 100; ///< tasks; those that changed longest ago are dropped

    /// Tasks beyond `longestFile` bytes are dropped, too.
    static PhoneTasks load(const std::filesystem::path& folder,
                           std::size_t longestFile = std::size_t{64} * 1024 * 1024);

    /// Ordered by the last change, latest first.
    [[nodiscard]] const std::vector<WorkItem>& items() const { return items_; }

    /// Stores a task unless this or a later revision is stored already. Of two tasks with one id the one that
    /// changed last is kept. Fails if the list cannot be saved, so that the Mac reports the task again.
    Result<void> take(const WorkItem& item);

  private:
    explicit PhoneTasks(ArchiveFile file) : file_(std::move(file)) {}

    Result<void> save();

    ArchiveFile file_;
    std::vector<WorkItem> items_;
    bool isSaved_ = true;
};

} // namespace morvex
