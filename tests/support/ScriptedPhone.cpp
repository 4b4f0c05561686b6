#include "tests/support/ScriptedPhone.h"

#include <utility>

namespace morvex {

void ScriptedPhone::call(std::string tool, std::string argumentsJSON, std::string requestID) {
    send({MacPayload::ToolCall{std::move(tool), std::move(argumentsJSON)}}, std::move(requestID));
}

} // namespace morvex
