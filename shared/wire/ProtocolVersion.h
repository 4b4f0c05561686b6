#pragma once

#include "shared/base/Error.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace morvex {

/// The version of the protocol. Two are compatible when their major numbers are equal.
struct ProtocolVersion {
    std::int64_t major = 0;
    std::int64_t minor = 0;

    static const ProtocolVersion current;

    /// Reads two decimal integers separated by a dot; empty pieces between dots are ignored. Anything else
    /// counts as a foreign version and fails with `TalkSpanError::ProtocolMismatch`.
    static Result<ProtocolVersion> parse(std::string_view text);

    [[nodiscard]] std::string text() const;

    [[nodiscard]] bool isCompatible(ProtocolVersion other) const { return major == other.major; }

    bool operator==(const ProtocolVersion&) const = default;
};

inline constexpr ProtocolVersion ProtocolVersion::current{1, 4};

} // namespace morvex

template <> struct std::hash<morvex::ProtocolVersion> {
    std::size_t operator()(const morvex::ProtocolVersion& version) const noexcept {
        return std::hash<std::string>{}(version.text());
    }
};
