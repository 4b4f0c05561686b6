#pragma once

#include "shared/base/Error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace morvex {

/// The reply to one command of IMAP (RFC 3501, section 2.2), collected line by line and literal by literal
/// up to the line with the command's tag.
///
///     line ──announces a literal──▶ its bytes ──▶ line … ──▶ tagged line
///
/// A value type.
class ImapReply {
  public:
    static constexpr std::size_t longestLiteral = std::size_t{16} * 1024 * 1024; ///< bytes
    static constexpr std::size_t longest = std::size_t{24} * 1024 * 1024;        ///< bytes of the whole

    explicit ImapReply(std::string_view tag) : tag_(std::string(tag) + " ") {}

    /// Takes the next line, without its end. Returns how many bytes of a literal follow it, or nothing when
    /// a line or the end does. Fails with `MacMailProtocolError::ProtocolError` when the reply is too long.
    Result<std::optional<std::size_t>> addLine(std::string_view line);

    /// Takes the bytes of the literal that the last line announced. Fails like `addLine`.
    Result<void> addLiteral(std::string_view bytes);

    [[nodiscard]] bool isComplete() const { return outcome_.has_value(); }

    /// What follows the tag, 64 KiB of it at most, without white space around it. Only of a complete reply.
    [[nodiscard]] const std::string& outcome() const { return *outcome_; }

    [[nodiscard]] bool isOk() const;

    /// The collected lines, announcing lines and lines of literals among them, for `ReplyLines`.
    [[nodiscard]] std::string takeLines() { return std::move(lines_); }

  private:
    Result<void> append(std::string_view line);

    std::string tag_; ///< with the blank behind it
    std::string lines_;
    std::optional<std::string> outcome_;
};

} // namespace morvex
