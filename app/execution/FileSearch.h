#pragma once

#include "foundation/TextPattern.h"
#include "platform/posix/BeneathFolder.h"
#include "platform/posix/FolderEntries.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// One walk through the files beneath a folder, by name. Hidden entries (dot names) and links are passed
/// over, and so is what lies in packages: folders that the Finder of a Mac shows as one document or program,
/// known here by their names, so that a tree brought from a Mac answers the same. What cannot be read is
/// passed over.
class FileSearch {
  public:
    struct Limits {
        int found = 0;
        std::size_t visited = 2'000'000; ///< entries looked at; then the walk ends with what it found
        std::size_t depth = 128;         ///< open folders at one time; what lies deeper is passed over
    };

    /// `query` matches as a part of the name, without regard to case; the empty one matches every file.
    FileSearch(std::string_view query, Limits limits);

    /// Paths relative to the folder, as text, in the order of the system. Blocks; once, on a worker. Fails
    /// with `TalkSpanError::Cancelled` alone, when `stop` is requested.
    Result<std::vector<std::string>> run(const BeneathFolder& folder, std::stop_token stop);

  private:
    struct Level {
        FolderEntries entries;
        std::string path; ///< from the searched folder, with a slash behind unless empty
    };

    void visit(const FolderEntries::Entry& entry);

    std::optional<TextPattern> query_; ///< nothing when no name can match
    Limits limits_;
    std::vector<Level> levels_;
    std::vector<std::string> found_;
};

} // namespace morvex
