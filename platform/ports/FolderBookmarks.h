#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>

namespace morvex {

/// A lasting permission to use a folder, as bytes that can be stored, and the access that it grants. Main
/// thread only, since a call touches only the folder itself and nothing in it.
class FolderBookmarks {
  public:
    struct Resolved {
        std::string path;
        bool stale = false; ///< still usable, but a new bookmark should be made
    };

    virtual ~FolderBookmarks() = default;

    /// Fails with the system's words if `path` is not a folder.
    virtual Result<Bytes> create(const std::string& path) = 0;
    /// Returns nothing when the bookmark no longer leads to its folder; a folder that only cannot be checked
    /// at present still resolves. Never asks the user.
    virtual std::optional<Resolved> resolve(ByteView bookmark) = 0;

    /// Access is counted: every `startAccess` that gave true needs one `stopAccess`.
    virtual bool startAccess(const std::string& path) = 0;
    virtual void stopAccess(const std::string& path) = 0;
};

} // namespace morvex
