#pragma once

#include "platform/ports/UserDefaults.h"

#include <map>

namespace morvex {

/// Settings that live as long as the test.
class MemoryDefaults final : public UserDefaults {
  public:
    [[nodiscard]] std::optional<DefaultsValue> get(const std::string& key) const override {
        auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    void set(const std::string& key, DefaultsValue value) override {
        ++writes;
        values_.insert_or_assign(key, std::move(value));
    }

    void remove(const std::string& key) override { values_.erase(key); }

    int writes = 0;

  private:
    std::map<std::string, DefaultsValue> values_;
};

} // namespace morvex
