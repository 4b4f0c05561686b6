#pragma once

#include "platform/ports/UserDefaults.h"

#include <utility>

namespace morvex {

/// Settings that live as long as the test.
class MemoryDefaults final : public UserDefaults {
  public:
    [[nodiscard]] std::optional<DefaultsValue> get(const std::string& key) const override {
        auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    void setTogether(DefaultsValues values) override {
        ++writes;
        values.merge(values_);
        values_ = std::move(values);
    }

    void remove(const std::string& key) override { values_.erase(key); }

    int writes = 0;

  private:
    DefaultsValues values_;
};

} // namespace morvex
