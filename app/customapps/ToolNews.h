#pragma once

#include "app/customapps/SeenTools.h"

#include <cstddef>
#include <string>

namespace morvex {

/// What a person is shown of a changed or new tool: the server's words without invisible characters. Of two
/// long texts the part is shown where they begin to differ.
struct ToolNews {
    /// Limit of each text in bytes, without the marks that something is left out.
    static constexpr std::size_t longest = 4'000;

    std::string name;
    bool isNew = false;      ///< there is no `before`
    bool isPast = false;     ///< the server does not say `after` any more
    std::string before = {}; ///< descriptions; empty where they are the same
    std::string after = {};
    std::string schemaBefore = {}; ///< empty where they are the same
    std::string schemaAfter = {};

    bool operator==(const ToolNews&) const = default;
};

/// The tool has news.
ToolNews toolNews(const SeenTool& tool);

} // namespace morvex
