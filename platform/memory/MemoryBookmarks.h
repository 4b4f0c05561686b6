#pragma once

#include "platform/ports/FolderBookmarks.h"

#include <map>
#include <set>
#include <vector>

namespace morvex {

/// Bookmarks whose bytes are "bookmark <number> <path>". They fail as the test demands.
class MemoryBookmarks final : public FolderBookmarks {
  public:
    Result<Bytes> create(const std::string& path) override;
    std::optional<Resolved> resolve(ByteView bookmark) override;
    bool startAccess(const std::string& path) override;
    void stopAccess(const std::string& path) override;

    /// Paths for which no bookmark can be made, with the reason.
    std::map<std::string, std::string> refusals;
    /// Old path to new path of moved folders.
    std::map<std::string, std::string> moved;
    std::set<std::string> unresolvable;
    std::set<std::string> stale;
    std::set<std::string> inaccessible;

    /// Number of accesses held, by path.
    std::map<std::string, int> held;
    /// Every start and stop in order, such as "start /a".
    std::vector<std::string> calls;

  private:
    int made_ = 0;
};

} // namespace morvex
