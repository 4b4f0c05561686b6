#pragma once

#include "platform/ports/FolderPicker.h"

#include <deque>

namespace morvex {

/// A folder panel in which a test has chosen beforehand; with no answer left the person gives up.
class FakeFolderPicker final : public FolderPicker {
  public:
    Task<std::vector<std::string>> pick(Question question) override;

    std::deque<std::vector<std::string>> answers;
    std::vector<Question> questions;
};

} // namespace morvex
