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

    /// What is on offer at this moment, in its order.
    [[nodiscard]] std::vector<ToolDescriptor> nabizeneNastroje() const { return table_.offered(); }

    /// Of these what the status names.
    [[nodiscard]] std::vector<ToolDescriptor> nastrojeVeStavu() const { return table_.inStatus(); }

    /// For the phone: runs what is on offer and refuses the rest. No failure of a tool escapes.
    Task<ToolOutcome> provestNastroj(ToolCall call);

    /// For this computer's own assistant: the same, but whatever changes something is approved first.
    Task<boost::json::object> provestMistne(std::string name, boost::json::object arguments);

  private:
    Task<bool> askForApproval(const std::string& name, const boost::json::object& arguments);

    const ToolTable& table_;
    CompanionState& state_;
    Schvalovani& schvalovani_;
    Random& random_;
};

} // namespace morvex
