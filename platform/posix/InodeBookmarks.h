#pragma once

#include "platform/ports/FolderBookmarks.h"

namespace morvex {

/// A bookmark is the path and the inode of the folder, `{"inode":12,"path":"/home/x"}`: another folder put at
/// the same path is not the one that was allowed. Device numbers are not stored because they change when the
/// computer restarts.
class InodeBookmarks final : public FolderBookmarks {
  public:
    /// Fails if the path is not a folder, and if it is not valid UTF-8.
    Result<Bytes> create(const std::string& path) override;
    std::optional<Resolved> resolve(ByteView bookmark) override;

    /// Always false: the user's own rights suffice on this system, so there is no access to hold.
    bool startAccess(const std::string& path) override;
    void stopAccess(const std::string& path) override;
};

} // namespace morvex
