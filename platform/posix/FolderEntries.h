#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Error.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// Lists an open folder, in the order of the system. Failures are `SystemError`.
class FolderEntries {
  public:
    enum class Kind { file, folder, other };

    struct Entry {
        std::string_view name; ///< any bytes; valid until the next entry is asked for
        Kind kind;             ///< `other` for a link
    };

    /// Takes a folder that was opened for listing.
    static Result<FolderEntries> of(FileDescriptor folder);

    /// Opens a folder anew that was opened in any way.
    static Result<FolderEntries> ofOpened(int folder);

    /// The next one but "." and ".."; nothing at the end.
    Result<std::optional<Entry>> next();

    /// Of a folder among the entries, which must not be a link.
    [[nodiscard]] Result<FolderEntries> enter(std::string_view name) const;

  private:
    struct Close {
        void operator()(void* listing) const;
    };

    using Listing = std::unique_ptr<void, Close>; ///< the system's

    explicit FolderEntries(Listing listing) : listing_(std::move(listing)) {}

    Listing listing_;
};

} // namespace morvex
