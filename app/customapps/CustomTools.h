#pragma once

#include "app/customapps/SeenTools.h"
#include "app/customapps/StoredApp.h"
#include "shared/wire/ToolDescriptor.h"

#include <boost/json/object.hpp>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// Limits of what is taken over from a server. A tool beyond one of them is left out.
namespace customToolLimits {

inline constexpr std::size_t mostOfApp = 256;
inline constexpr std::size_t mostInAll = 512;
inline constexpr std::size_t longestName = 256;          ///< bytes
inline constexpr std::size_t longestDescription = 4'000; ///< bytes
inline constexpr std::size_t longestSchema = 32 * 1024;  ///< bytes of its JSON
/// Bytes of the summaries and schemas of all tools, so that the status, in which they are texts within a
/// text, fits into a frame; and of one app's, so that it leaves room for others.
inline constexpr std::size_t longestInAll = 1024 * 1024;
inline constexpr std::size_t longestOfApp = longestInAll / 2;

} // namespace customToolLimits

/// A tool that a custom app lends.
struct CustomTool {
    std::string remoteName;    ///< on the server
    ToolDescriptor descriptor; ///< under this computer's own name of the tool
    SeenDescription seen;      ///< what the server says of it
};

/// The public name of an app's tool: "mac.custom.", the app's prefix, ".", and the remote name. It has at
/// most 62 characters.
std::string customToolName(std::string_view appID, std::string_view remoteName);

/// A tool in the list of a server.
struct ListedTool {
    DescribedTool described;
    SeenDescription seen;
};

/// What the server of an app says of its tools, in its order, without characters that nobody sees. An element
/// that cannot be used has no value, but keeps its place; so has a tool that hides such characters where they
/// cannot be taken out, in a name or a value of its schema.
using ToolList = std::vector<std::optional<ListedTool>>;

/// Reads the `tools` in the result of `tools/list`; none if that is no array. May take some milliseconds.
ToolList toolList(const boost::json::object& result);

/// The tools in the list of an app's server. `isTaken` tells of the public names that other apps have; a name
/// that is taken gets the tool's position in the list, and a tool whose name is taken even then is left out.
std::vector<CustomTool> customTools(const StoredApp& app, const ToolList& list,
                                    const std::function<bool(const std::string&)>& isTaken);

} // namespace morvex
