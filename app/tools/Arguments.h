#pragma once

#include <boost/json/object.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// Reads the arguments of a tool call. A value of another JSON type than the wanted one counts as missing.
class Arguments {
  public:
    explicit Arguments(const boost::json::object& arguments) : arguments_(arguments) {}

    /// For arguments that must be there, whatever they hold, and for optional ones.
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const;

    /// A missing one counts as empty: for arguments that must not be empty.
    [[nodiscard]] std::string textOrEmpty(std::string_view key) const { return text(key).value_or(""); }

    /// A fraction is cut off; a number beyond 64 bits is missing.
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;
    /// Missing as a whole when one element is no text.
    [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string_view key) const;

  private:
    const boost::json::object& arguments_;
};

} // namespace morvex
