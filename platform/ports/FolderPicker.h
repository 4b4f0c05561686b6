#pragma once

#include "foundation/Task.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// Lets the user choose folders. Main thread.
class FolderPicker {
  public:
    struct Question {
        std::string prompt;                 ///< the label of the confirming button
        std::string message;                ///< what the folders are for
        std::optional<std::string> startAt; ///< the folder to show first
    };

    virtual ~FolderPicker() = default;

    /// Absolute paths of the chosen folders; empty if the user cancelled.
    virtual Task<std::vector<std::string>> pick(Question question) = 0;
};

} // namespace morvex
