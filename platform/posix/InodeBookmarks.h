#pragma once

#include "platform/ports/FolderBookmarks.h"

namespace morvex {

/// A bookmark is the path and the inode of the folder, `{"inode":12,"path":"/home/x"}`: a folder that
/// somebody else put at the path is not the one that was allowed. Device numbers change over a restart of the
/// computer and are not kept.
class InodeBookmarks final : public FolderBookmarks {
  public:
    /// Fails for what is no folder, and for a path that is not valid UTF-8.
    Result<Bytes> create(const std::string& path) override;
    std::optional<Resolved> resolve(ByteView bookmark) override;

    /// False: the user's own rights suffice here, so that there is nothing to hold.
    bool startAccess(const std::string& path) override;
    void stopAccess(const std::string& path) override;
};

} // namespace morvex
