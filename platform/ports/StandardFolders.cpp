#include "platform/ports/StandardFolders.h"

#include <algorithm>

namespace morvex {

std::string expandingTilde(std::string_view path, const StandardFolders& folders) {
    if (!path.starts_with('~')) return std::string(path);
    auto end = std::min(path.find('/'), path.size());
    auto user = path.substr(1, end - 1);
    // The system would cut the name at the zero byte.
    if (user.contains('\0')) return std::string(path);
    auto home = user.empty() ? std::optional(folders.home()) : folders.homeOf(std::string(user));
    return home ? *home + std::string(path.substr(end)) : std::string(path);
}

} // namespace morvex
