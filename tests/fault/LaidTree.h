#pragma once

#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/app/execution/FileTree.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// The answer of a file tool.
enum class Answer { done, forbidden, outside, notAFile, tooLarge, exists, obeyed, failed };

/// Prints an answer in a test's failure message.
void PrintTo(Answer answer, std::ostream* out);

/// A tree of files that a line of text describes, and the file tools over it. Entries are parted by "; ":
///
///     name            a file                 name/         a folder
///     name -> target  a link                 name = other  a hard link
///     name |          a pipe                 name *        a socket
///     name #size      a file of that size    name !        what is there, without any permission
///
/// Names lie in the allowed folder, those that begin with a slash in the root of the tree, which "$" means in
/// targets. The content of a file is "inside", and "secret" below `outside` and the other folders of `home`.
class LaidTree {
  public:
    /// `folder` is passed to the tools together with the path, as a user may name a folder.
    LaidTree(std::string_view layout, std::vector<std::string> allowed = {"home/Projects"},
             std::optional<std::string> folder = std::nullopt);
    ~LaidTree();
    LaidTree(const LaidTree&) = delete;
    LaidTree& operator=(const LaidTree&) = delete;

    /// Replaces "$" by the root of the tree.
    [[nodiscard]] std::string rooted(std::string_view text) const;

    /// From now on `folder` is passed unchanged to the tools together with the path.
    void tellFolder(std::string folder) { folder_ = std::move(folder); }

    struct Read {
        Answer answer;
        std::string content;
    };

    Read read(const std::string& path);
    Answer write(const std::string& path, const std::string& content);
    /// Sorted; nothing if the search was refused.
    std::optional<std::vector<std::string>> search(const std::string& query);

    /// Every entry of the whole tree with its kind and what it holds, by its path from the root.
    [[nodiscard]] std::map<std::string, std::string> snapshot() const;

  private:
    void lay(const std::string& entry);
    void layLink(const std::string& name, const std::string& target) const;
    [[nodiscard]] std::string placeOf(std::string_view name) const;
    void socket(const std::string& name) const;

    FileTree tree_;
    std::vector<std::string> allowed_;
    std::optional<std::string> folder_;
    std::vector<std::string> closed_;
    ManualExecutor executor_;
    SouboryBridge files_{executor_};
};

} // namespace morvex
