#include "app/customapps/ToolNews.h"

#include "foundation/TextFilter.h"
#include "shared/base/Utf8.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

namespace morvex {

namespace {

constexpr std::size_t commonShown = 200; ///< bytes in front of the first difference

/// The text from there on, with "…" where something is left out.
std::string partFrom(std::string_view text, std::size_t begin) {
    auto part = clipped(text.substr(begin), ToolNews::longest);
    return begin == 0 ? part : "…" + part;
}

/// The parts of two texts where they differ; empty if they do not.
std::pair<std::string, std::string> difference(const std::string& before, const std::string& after) {
    const auto one = visibleText(before);
    const auto other = visibleText(after);
    if (one == other) return {};
    const auto common = static_cast<std::size_t>(std::ranges::mismatch(one, other).in1 - one.begin());
    const bool fits = std::max(one.size(), other.size()) <= ToolNews::longest;
    const auto begin = fits || common <= commonShown ? 0 : firstBytes(one, common - commonShown).size();
    return {partFrom(one, begin), partFrom(other, begin)};
}

} // namespace

ToolNews toolNews(const SeenTool& tool) {
    const auto before = tool.known.value_or(SeenDescription{});
    const auto after = tool.news.value_or(SeenDescription{});
    ToolNews news{.name = visibleText(tool.name), .isNew = !tool.known, .isPast = tool.isPast};
    std::tie(news.before, news.after) = difference(before.description, after.description);
    std::tie(news.schemaBefore, news.schemaAfter) = difference(before.schema, after.schema);
    return news;
}

} // namespace morvex
