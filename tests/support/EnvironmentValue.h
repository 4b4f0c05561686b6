#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace morvex {

/// While it lives, sets an environment variable to another value or removes it.
class EnvironmentValue {
  public:
    EnvironmentValue(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        if (const char* before = std::getenv(name_.c_str())) before_ = before;
        put(value);
    }

    ~EnvironmentValue() { put(before_); }

    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;

  private:
    void put(const std::optional<std::string>& value) const {
        if (value)
            ::setenv(name_.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> before_;
};

} // namespace morvex
