#pragma once

#include "platform/ports/FolderBookmarks.h"

#include <map>
#include <set>
#include <vector>

namespace morvex {

/// Bookmarks whose bytes are "bookmark <number> <path>", and that fail when a test tells them to.
class MemoryBookmarks final : public FolderBookmarks {
  public:
    Result<Bytes> create(const std::string& path) override;
    std::optional<Resolved> resolve(ByteView bookmark) override;
    bool startAccess(const std::string& path) override;
    void stopAccess(const std::string& path) override;

    /// Why no bookmark of a path can be made.
    std::map<std::string, std::string> refusals;
    /// Where the bookmarks of a moved folder lead now.
    std::map<std::string, std::string> moved;
    std::set<std::string> unresolvable;
    std::set<std::string> stale;
    std::set<std::string> inaccessible;

    /// Accesses that are held, by path.
    std::map<std::string, int> held;
    /// Every start and stop in order, "start /a" for one.
    std::vector<std::string> calls;

  private:
    int made_ = 0;
};

} // namespace morvex
