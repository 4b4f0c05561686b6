#include "foundation/Paths.h"

#include "foundation/Text.h"
#include "platform/posix/base/PathEntry.h"
#include "shared/base/SystemError.h"

#include <algorithm>

namespace morvex::paths {

namespace {

constexpr int mostLinks = 40;

void dropLast(std::string& path) {
    path.erase(path.find_last_of('/') == std::string::npos ? 0 : path.find_last_of('/'));
}

/// The components that are still to be walked, the next one last.
class Pending {
  public:
    explicit Pending(std::string_view path) { push(path); }

    void push(std::string_view path) {
        auto parts = components(path);
        parts_.insert(parts_.end(), parts.rbegin(), parts.rend());
    }

    std::optional<std::string> next() {
        if (parts_.empty()) return std::nullopt;
        auto part = std::move(parts_.back());
        parts_.pop_back();
        return part;
    }

  private:
    std::vector<std::string> parts_;
};

} // namespace

std::vector<std::string> components(std::string_view path) {
    std::vector<std::string> parts;
    while (!path.empty()) {
        auto end = std::min(path.find('/'), path.size());
        if (end > 0) parts.emplace_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

std::string lastComponent(std::string_view path) {
    auto end = path.find_last_not_of('/');
    if (end == std::string_view::npos) return path.empty() ? "" : "/";
    auto start = path.find_last_of('/', end);
    start = start == std::string_view::npos ? 0 : start + 1;
    return repairUtf8(path.substr(start, end - start + 1));
}

std::string below(std::string_view folder, std::string_view path) {
    std::string result(folder);
    if (path.empty()) return result;
    if (!result.ends_with('/')) result += '/';
    return result += path;
}

std::string standardized(std::string_view absolutePath) {
    std::string result;
    for (const auto& part : components(absolutePath)) {
        if (part == ".") continue;
        if (part == "..")
            dropLast(result);
        else
            result.append("/").append(part);
    }
    return result.empty() ? "/" : result;
}

std::optional<std::string> resolved(std::string_view absolutePath) {
    std::string result;
    Pending pending(standardized(absolutePath));
    int links = 0;
    // Below what is missing nothing is looked up, so that a long path costs no more than its length.
    bool missing = false;
    while (auto part = pending.next()) {
        if (*part == ".") continue;
        if (*part == "..") {
            dropLast(result);
            missing = false;
            continue;
        }
        auto length = result.size();
        result.append("/").append(*part);
        if (missing) continue;
        auto entry = PathEntry::at(result);
        missing = entry.kind == PathEntry::Kind::missing;
        if (entry.kind != PathEntry::Kind::link) continue;
        if (++links > mostLinks) return std::nullopt;
        result.resize(entry.target.starts_with('/') ? 0 : length);
        pending.push(entry.target);
    }
    if (result.empty()) result = "/";
    return result;
}

bool isFolder(const std::string& path) {
    return leadsToFolder(path).value_or(false);
}

bool isNoFolder(const std::string& path) {
    const auto leads = leadsToFolder(path);
    return leads ? !*leads : saysMissing(systemCode(leads.error()));
}

} // namespace morvex::paths
