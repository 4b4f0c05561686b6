#pragma once

#include <compare>
#include <memory>
#include <string_view>

namespace morvex {

/// The order of a Czech dictionary, regardless of case: "čaj" after "cukr", "chata" after "had".
class TextOrder {
  public:
    TextOrder();
    ~TextOrder();
    TextOrder(const TextOrder&) = delete;
    TextOrder& operator=(const TextOrder&) = delete;

    [[nodiscard]] std::weak_ordering compare(std::string_view left, std::string_view right) const;

  private:
    struct Rules;

    std::unique_ptr<const Rules> rules_;
};

} // namespace morvex
