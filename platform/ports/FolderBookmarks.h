#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <optional>
#include <string>

namespace morvex {

/// A lasting right to a folder, in bytes that can be stored, and the access that it opens. Main thread; a
/// call looks at the folder and at nothing in it.
class FolderBookmarks {
  public:
    struct Resolved {
        std::string path;
        bool stale = false; ///< still usable, but a new bookmark should be made
    };

    virtual ~FolderBookmarks() = default;

    /// Fails, with the system's words, for what is no folder.
    virtual Result<Bytes> create(const std::string& path) = 0;
    /// Nothing when the bookmark no longer leads to its folder; one whose folder cannot be looked at now
    /// still does. Never asks the user.
    virtual std::optional<Resolved> resolve(ByteView bookmark) = 0;

    /// Access is counted: every `startAccess` that gave true needs one `stopAccess`.
    virtual bool startAccess(const std::string& path) = 0;
    virtual void stopAccess(const std::string& path) = 0;
};

} // namespace morvex
