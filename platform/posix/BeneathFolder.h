#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace morvex {

/// Opens what lies beneath one folder, and nothing else: the way is walked without following a single link,
/// so that a link put there after a check makes the call fail. Relative paths have their links resolved
/// already and hold no ".."; the empty one is the folder itself. Calls may block on the disk; failures are
/// `SystemError`.
class BeneathFolder {
  public:
    enum class Held { folder, file };

    /// `resolvedPath` is absolute, its links resolved.
    static Result<BeneathFolder> open(std::string_view resolvedPath);

    /// Whether there is anything at the path, be it a link that leads nowhere.
    [[nodiscard]] Result<bool> exists(std::string_view path) const;

    /// A regular file, for reading. Anything else fails with EISDIR or EINVAL; a pipe or device is not even
    /// opened.
    [[nodiscard]] Result<FileDescriptor> openFile(std::string_view path) const;

    /// A folder, for listing.
    [[nodiscard]] Result<FileDescriptor> openFolder(std::string_view path) const;

    /// Asked at each step to a new file, before it is taken or made, what a folder may hold: the folder is
    /// open for passing through, `name` lies in it or will. A failure ends the writing and is passed on.
    using MayHold = std::function<Result<void>(int folder, const std::string& name, Held held)>;

    /// Makes a new file with these bytes (0644) and the folders above it (0755), less the umask. What exists
    /// is never replaced: EEXIST. A file that could not be written whole is removed again; its folders stay.
    [[nodiscard]] Result<void> writeNew(std::string_view path, ByteView bytes,
                                        const MayHold& mayHold = anything) const;

  private:
    static Result<void> anything(int /*folder*/, const std::string& /*name*/, Held /*held*/) { return {}; }

    explicit BeneathFolder(FileDescriptor folder) : folder_(std::move(folder)) {}

    FileDescriptor folder_;
};

} // namespace morvex
