#pragma once

#include "shared/base/Error.h"

#include <boost/json.hpp>

#include <cstddef>
#include <optional>
#include <string_view>

namespace morvex {

/// The longest text that is read when the caller sets no limit of its own.
inline constexpr std::size_t jsonSizeLimit = 16 * 1024 * 1024;
/// Objects and arrays nest at most this deep.
inline constexpr std::size_t jsonDepthLimit = 64;

/// One parsed text and the memory under it. Strict RFC 8259: valid UTF-8, no extensions, nothing after the
/// value. Of equal keys in one object the last counts. Parsing takes at most four times the length of the
/// text plus half the limit, or 8 MiB if that is more; a text that needs more is refused.
class JsonDocument {
  public:
    JsonDocument() = default;
    JsonDocument(const JsonDocument&) = delete;
    JsonDocument& operator=(const JsonDocument&) = delete;

    /// Called once. The value lives as long as the document. Fails with a `DecodeError`.
    Result<const boost::json::value*> parse(std::string_view text, std::size_t limit);

  private:
    /// Hands out memory until the allowance is used up.
    class Budget final : public boost::json::memory_resource {
      public:
        std::size_t left = 0;

      private:
        void* do_allocate(std::size_t size, std::size_t alignment) override;
        void do_deallocate(void* memory, std::size_t size, std::size_t alignment) override;

        bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }
    };

    Budget budget_;
    std::optional<boost::json::value> root_;
};

/// Whether a text of `encode`, without white space between its values, will be read again under this limit.
/// Fails as `JsonDocument::parse` would.
Result<void> checkReadable(std::string_view json, std::size_t limit);

} // namespace morvex
