#pragma once

#include <optional>
#include <string_view>
#include <utility>

namespace morvex {

/// Walks the lines that a reply has collected. Each ends with LF, in a literal also with CR LF.
class ReplyLines {
  public:
    explicit ReplyLines(std::string_view lines) : rest_(lines) {}

    /// The next line without its end, or nothing after the last one.
    std::optional<std::string_view> next() {
        if (rest_.empty()) return std::nullopt;
        const auto end = rest_.find('\n');
        auto line = rest_.substr(0, end);
        while (line.ends_with('\r')) line.remove_suffix(1);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        return line;
    }

  private:
    std::string_view rest_;
};

} // namespace morvex
