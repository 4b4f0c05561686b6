#include "foundation/Paths.h"

#include "foundation/SystemError.h"
#include "foundation/Text.h"
#include "foundation/Uninterrupted.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace morvex::paths {

namespace {

constexpr int mostLinks = 40;

bool hasNul(std::string_view path) {
    return path.contains('\0');
}

void dropLast(std::string& path) {
    path.erase(path.find_last_of('/') == std::string::npos ? 0 : path.find_last_of('/'));
}

enum class Kind { missing, link, other };

struct Entry {
    Kind kind = Kind::missing;
    std::string target;
};

/// Whatever cannot be looked at counts as missing: this process cannot open it either.
Entry look(const std::string& path) {
    if (hasNul(path)) return {};
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0) return {};
    if (!S_ISLNK(status.st_mode)) return {Kind::other, {}};
    std::array<char, PATH_MAX> target{};
    auto length = ::readlink(path.c_str(), target.data(), target.size());
    if (length < 0) return {};
    return {Kind::link, std::string(target.data(), static_cast<std::size_t>(length))};
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

/// Of what is at the absolute path, also through a link.
Result<mode_t> modeOf(const std::string& path) {
    struct stat status{};
    if (!path.starts_with('/') || hasNul(path)) return fail(SystemError{ENOENT});
    if (uninterrupted([&] { return ::stat(path.c_str(), &status); }) != 0) return fail(SystemError{errno});
    return status.st_mode;
}

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
        auto entry = look(result);
        missing = entry.kind == Kind::missing;
        if (entry.kind != Kind::link) continue;
        if (++links > mostLinks) return std::nullopt;
        result.resize(entry.target.starts_with('/') ? 0 : length);
        pending.push(entry.target);
    }
    if (result.empty()) result = "/";
    return result;
}

bool isFolder(const std::string& path) {
    const auto mode = modeOf(path);
    return mode && S_ISDIR(*mode);
}

bool isNoFolder(const std::string& path) {
    const auto mode = modeOf(path);
    return mode ? !S_ISDIR(*mode) : saysMissing(systemCode(mode.error()));
}

} // namespace morvex::paths
