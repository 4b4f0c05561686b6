#pragma once

#include "shared/wire/ToolDescriptor.h"

#include <string_view>
#include <vector>

namespace morvex::ToolCatalogue {

/// The descriptors of this program's own tools, in the order of the offer. Built once; the texts never
/// change.
const std::vector<ToolDescriptor>& descriptors();

/// Null if the catalogue has no tool of this name.
const ToolDescriptor* find(std::string_view name);

} // namespace morvex::ToolCatalogue
