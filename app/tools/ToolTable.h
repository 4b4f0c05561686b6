#pragma once

#include "app/tools/Tool.h"

#include <string_view>
#include <vector>

namespace morvex {

/// All tools of this computer in the fixed order of the offer, whatever was registered when. Main
/// thread; filled once, before the first call. What its rows use outlives it.
class ToolTable {
  public:
    /// `name` is one of the catalogue, which knows the rest of the descriptor; each is added once.
    void add(std::string_view name, std::function<bool()> isOffered,
             std::function<Task<ToolOutcome>(ToolCall)> run);

    /// Computed anew at each call: what is on offer at this moment.
    [[nodiscard]] std::vector<ToolDescriptor> offered() const;

    /// Null when there is no such tool. Whether it is on offer is another question.
    [[nodiscard]] const Tool* find(std::string_view name) const;

  private:
    std::vector<Tool> tools_;
};

} // namespace morvex
