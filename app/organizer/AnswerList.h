#pragma once

#include "app/tools/Tool.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <cstddef>
#include <string_view>

namespace morvex {

/// The list in the answer of a tool. It takes no more entries than can be sent.
class AnswerList {
  public:
    void add(boost::json::object entry);

    /// A list that is too long to be sent is refused as a whole.
    [[nodiscard]] ToolOutcome outcome(std::string_view key) &&;

  private:
    boost::json::array entries_;
    std::size_t bytes_ = 0;
};

} // namespace morvex
