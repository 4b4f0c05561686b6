#pragma once

#include "platform/ports/FolderPicker.h"

#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Answers with the folders that were named on the command line of the console.
class ConsoleFolderPicker final : public FolderPicker {
  public:
    void choose(std::string path) { chosen_.push_back(std::move(path)); }

    Task<std::vector<std::string>> pick(Question) override { co_return std::exchange(chosen_, {}); }

  private:
    std::vector<std::string> chosen_;
};

} // namespace morvex
