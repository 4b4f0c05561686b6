#pragma once

#include "platform/ports/FolderPicker.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Answers with the folders that were named in commands of the console.
class ConsoleFolderPicker final : public FolderPicker {
  public:
    void choose(std::string path) { chosen_.push_back(std::move(path)); }

    Task<std::vector<std::string>> pick(Question) override {
        if (chosen_.empty()) co_return std::vector<std::string>{};
        std::vector first{std::move(chosen_.front())};
        chosen_.pop_front();
        co_return first;
    }

  private:
    std::deque<std::string> chosen_; ///< one choice each, so that a no affects only that one
};

} // namespace morvex
