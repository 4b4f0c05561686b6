#include "app/execution/FileSearch.h"

#include "foundation/Text.h"
#include "shared/wire/TalkSpanError.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>
#include <utility>

namespace morvex {

namespace {

/// A file name has at most 255 bytes, and no normal form makes it this long.
constexpr std::size_t longestMatch = 4096;

constexpr std::array<std::string_view, 14> packageEndings = {
    ".app",    ".appex", ".bundle", ".component", ".framework", ".kext",      ".photoslibrary",
    ".plugin", ".pkg",   ".rtfd",   ".prefpane",  ".xpc",       ".xcodeproj", ".xcworkspace",
};

enum class Kind { file, folder, other };

Kind kindOf(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) return Kind::file;
    if (entry.d_type == DT_DIR) return Kind::folder;
    if (entry.d_type != DT_UNKNOWN) return Kind::other;
    struct stat status{};
    if (::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return Kind::other;
    if (S_ISREG(status.st_mode)) return Kind::file;
    return S_ISDIR(status.st_mode) ? Kind::folder : Kind::other;
}

bool isPackage(std::string_view lowerCaseName) {
    return std::ranges::any_of(packageEndings, [&](auto ending) { return lowerCaseName.ends_with(ending); });
}

} // namespace

FileSearch::FileSearch(std::string_view query, Limits limits) : limits_(limits) {
    auto lowered = lowerCase(query);
    if (lowered.size() <= longestMatch) query_.emplace(lowered);
}

Result<std::vector<std::string>> FileSearch::run(const BeneathFolder& folder, std::stop_token stop) {
    if (!query_) return found_;
    enter(folder.openFolder(""), "");
    for (std::size_t visited = 0; !levels_.empty() && visited < limits_.visited; ++visited) {
        if (std::cmp_greater_equal(found_.size(), limits_.found)) break;
        if (stop.stop_requested()) return fail(TalkSpanError{TalkSpanError::Cancelled{}});
        if (const auto* entry = ::readdir(levels_.back().folder.get()))
            visit(*entry);
        else
            levels_.pop_back();
    }
    return std::move(found_);
}

void FileSearch::visit(const dirent& entry) {
    std::string_view name(entry.d_name);
    if (name.starts_with('.')) return;
    const auto& level = levels_.back();
    int folder = ::dirfd(level.folder.get());
    auto kind = kindOf(folder, entry);
    if (kind == Kind::other) return;

    if (kind == Kind::file) {
        if (query_->isInLowerCaseOf(name)) found_.push_back(repairUtf8(level.path + entry.d_name));
    } else if (levels_.size() < limits_.depth && !isPackage(lowerCase(name))) {
        int opened = ::openat(folder, entry.d_name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (opened >= 0) enter(FileDescriptor(opened), level.path + entry.d_name + '/');
    }
}

void FileSearch::enter(Result<FileDescriptor> folder, std::string path) {
    if (!folder) return;
    Level level{{::fdopendir(folder->get()), ::closedir}, std::move(path)};
    if (!level.folder) return;
    std::ignore = folder->release();
    levels_.push_back(std::move(level));
}

} // namespace morvex
