#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Paths as text of any bytes. Nothing here fails and nothing opens a file; a path with a NUL byte is never
/// given to the system, which would cut it.
namespace morvex::paths {

/// The parts between slashes. Empty parts are left out.
std::vector<std::string> components(std::string_view path);

/// The last component as text for a person, invalid UTF-8 repaired; "/" for the root.
std::string lastComponent(std::string_view path);

/// `path` below `folder`; the folder itself when `path` is empty.
std::string below(std::string_view folder, std::string_view path);

/// An absolute path without ".", ".." and empty components, by its text alone: `..` takes back the component
/// before it, even where that is a link.
std::string standardized(std::string_view absolutePath);

/// The standardized path with all links resolved as far as the path exists. The target of a dangling link is
/// followed too. Nothing for a loop of links or a chain that the system would not follow either.
std::optional<std::string> resolved(std::string_view absolutePath);

/// Whether there is a folder at this absolute path, also through a link.
bool isFolder(const std::string& path);

/// Whether there certainly is none. What cannot be looked at, on a disk that fails say, may be one.
bool isNoFolder(const std::string& path);

} // namespace morvex::paths
