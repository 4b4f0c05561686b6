#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/companion/CompanionState.h"
#include "app/tools/ToolTable.h"
#include "foundation/Random.h"

#include <boost/json/object.hpp>

#include <string>

namespace morvex {

/// The one gate in front of every tool, for the phone and for this computer's own assistant. Main thread
/// only.
class ToolGate {
  public:
    ToolGate(const ToolTable& table, CompanionState& state, Schvalovani& schvalovani, Random& random)
        : table_(table), state_(state), schvalovani_(schvalovani), random_(random) {}

    /// The tools on offer at this moment, in the order of the table.
    [[nodiscard]] std::vector<ToolDescriptor> nabizeneNastroje() const { return table_.offered(); }

    /// Those of the offered tools that the status names.
    [[nodiscard]] std::vector<ToolDescriptor> toolsInStatus() const { return table_.inStatus(); }

    /// For the phone: runs a tool on offer and refuses any other. A tool that fails gives a refusal, never an
    /// exception.
    Task<ToolOutcome> provestNastroj(ToolCall call);

    /// For this computer's own assistant: the same, but the user first approves whatever changes something.
    Task<boost::json::object> provestMistne(std::string name, boost::json::object arguments);

  private:
    Task<bool> askForApproval(const std::string& name, const boost::json::object& arguments);

    const ToolTable& table_;
    CompanionState& state_;
    Schvalovani& schvalovani_;
    Random& random_;
};

} // namespace morvex
