#pragma once

#include "platform/ports/UserDefaults.h"

#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Settings in memory whose saving fails when the test demands it.
class MemoryDefaults final : public UserDefaults {
  public:
    [[nodiscard]] std::optional<DefaultsValue> get(const std::string& key) const override {
        auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    void changeTogether(DefaultsValues values, const std::vector<std::string>& removed) override {
        ++writes;
        values.merge(values_);
        values_ = std::move(values);
        for (const auto& key : removed) values_.erase(key);
    }

    Task<Result<void>> setOnceSaved(DefaultsValues values) override {
        if (refusal) co_return fail(*refusal);
        setTogether(std::move(values));
        co_return Result<void>{};
    }

    Task<void> saved() override { co_return; }

    [[nodiscard]] std::optional<Sentence> problem() const override { return problem_; }

    void setProblem(std::optional<Sentence> problem) {
        problem_ = std::move(problem);
        tellOfProblem();
    }

    int writes = 0;
    std::optional<TextError> refusal; ///< makes `setOnceSaved` fail

  private:
    std::optional<Sentence> problem_;
    DefaultsValues values_;
};

} // namespace morvex
