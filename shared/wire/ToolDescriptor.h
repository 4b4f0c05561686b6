#pragma once

#include "shared/wire/Codec.h"
#include "shared/wire/ToolRisk.h"

#include <string>

namespace morvex {

/// What the phone's assistant learns about one tool.
struct ToolDescriptor {
    std::string name;
    std::string summary; ///< Czech, for the assistant
    ToolRisk risk = ToolRisk::forbidden;
    std::string parametersJSON; ///< a JSON Schema as text
    bool streamsProgress = false;

    bool operator==(const ToolDescriptor&) const = default;
};

extern template struct Codec<ToolDescriptor>;

} // namespace morvex
