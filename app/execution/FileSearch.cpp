#include "app/execution/FileSearch.h"

#include "foundation/Text.h"
#include "shared/wire/TalkSpanError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace morvex {

namespace {

/// A file name has at most 255 bytes, and no normal form makes it this long.
constexpr std::size_t longestMatch = 4096;

constexpr std::array<std::string_view, 14> packageEndings = {
    ".app",    ".appex", ".bundle", ".component", ".framework", ".kext",      ".photoslibrary",
    ".plugin", ".pkg",   ".rtfd",   ".prefpane",  ".xpc",       ".xcodeproj", ".xcworkspace",
};

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
    auto opened = folder.openFolder("");
    if (!opened) return found_;
    auto entries = FolderEntries::of(*std::move(opened));
    if (!entries) return found_;
    levels_.push_back({*std::move(entries), ""});
    for (std::size_t visited = 0; !levels_.empty() && visited < limits_.visited; ++visited) {
        if (std::cmp_greater_equal(found_.size(), limits_.found)) break;
        if (stop.stop_requested()) return fail(TalkSpanError{TalkSpanError::Cancelled{}});
        const auto entry = levels_.back().entries.next();
        if (entry && *entry)
            visit(**entry);
        else
            levels_.pop_back();
    }
    return std::move(found_);
}

void FileSearch::visit(const FolderEntries::Entry& entry) {
    using Kind = FolderEntries::Kind;
    if (entry.name.starts_with('.') || entry.kind == Kind::other) return;
    const auto& level = levels_.back();
    const auto path = [&] { return level.path + std::string(entry.name); };
    if (entry.kind == Kind::file) {
        if (query_->isInLowerCaseOf(entry.name)) found_.push_back(repairUtf8(path()));
    } else if (levels_.size() < limits_.depth && !isPackage(lowerCase(entry.name))) {
        if (auto entries = level.entries.enter(entry.name))
            levels_.push_back({*std::move(entries), path() + '/'});
    }
}

} // namespace morvex
