#pragma once

#include "platform/ports/FolderPicker.h"

#include <deque>

namespace morvex {

/// A folder dialog with answers prepared by the test; when no answer is left, it acts as if the user
/// cancelled.
class FakeFolderPicker final : public FolderPicker {
  public:
    Task<std::vector<std::string>> pick(Question question) override;

    std::deque<std::vector<std::string>> answers;
    std::vector<Question> questions;
};

} // namespace morvex
