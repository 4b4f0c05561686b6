#include "platform/memory/MemoryBookmarks.h"

namespace morvex {

Result<Bytes> MemoryBookmarks::create(const std::string& path) {
    auto refusal = refusals.find(path);
    if (refusal != refusals.end()) return fail(TextError{refusal->second});
    return toBytes("bookmark " + std::to_string(++made_) + " " + path);
}

std::optional<FolderBookmarks::Resolved> MemoryBookmarks::resolve(ByteView bookmark) {
    auto text = asText(bookmark);
    auto start = text.find('/');
    if (!text.starts_with("bookmark ") || start == std::string_view::npos) return std::nullopt;
    std::string path(text.substr(start));
    if (unresolvable.contains(path)) return std::nullopt;
    auto found = moved.find(path);
    return Resolved{found == moved.end() ? path : found->second, stale.contains(path)};
}

bool MemoryBookmarks::startAccess(const std::string& path) {
    calls.push_back("start " + path);
    if (inaccessible.contains(path)) return false;
    ++held[path];
    return true;
}

void MemoryBookmarks::stopAccess(const std::string& path) {
    calls.push_back("stop " + path);
    if (--held[path] == 0) held.erase(path);
}

} // namespace morvex
