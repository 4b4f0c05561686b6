#pragma once

#include "shared/base/Sentence.h"
#include "shared/wire/Codec.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace morvex {

/// The failures that phone and Mac share.
struct TalkSpanError {
    struct ProtocolMismatch {
        std::string mine;
        std::string theirs;
        bool operator==(const ProtocolMismatch&) const = default;
    };

    struct NotPaired {
        Sentence text;
        bool operator==(const NotPaired&) const = default;
    };

    struct BadSignature {
        bool operator==(const BadSignature&) const = default;
    };

    struct Expired {
        double age = 0; ///< seconds
        bool operator==(const Expired&) const = default;
    };

    struct Replay {
        bool operator==(const Replay&) const = default;
    };

    struct MacOffline {
        bool operator==(const MacOffline&) const = default;
    };

    struct MacBusy {
        std::string text;
        bool operator==(const MacBusy&) const = default;
    };

    struct ToolUnavailable {
        std::string tool;
        std::string reason;
        bool operator==(const ToolUnavailable&) const = default;
    };

    struct NotAllowed {
        std::string tool;
        std::string reason;
        bool operator==(const NotAllowed&) const = default;
    };

    struct ApprovalRequired {
        std::string text;
        bool operator==(const ApprovalRequired&) const = default;
    };

    struct Rejected {
        std::optional<std::string> reason;
        bool operator==(const Rejected&) const = default;
    };

    struct TimedOut {
        std::int64_t seconds = 0;
        bool operator==(const TimedOut&) const = default;
    };

    struct Cancelled {
        bool operator==(const Cancelled&) const = default;
    };

    struct OutsideAllowedFolders {
        std::string path;
        bool operator==(const OutsideAllowedFolders&) const = default;
    };

    struct ToolFailed {
        std::string tool;
        Sentence message;
        bool operator==(const ToolFailed&) const = default;
    };

    std::variant<ProtocolMismatch, NotPaired, BadSignature, Expired, Replay, MacOffline, MacBusy,
                 ToolUnavailable, NotAllowed, ApprovalRequired, Rejected, TimedOut, Cancelled,
                 OutsideAllowedFolders, ToolFailed>
        value;

    [[nodiscard]] Sentence popis() const;

    /// Null when the value holds another case.
    template <class Case> [[nodiscard]] const Case* as() const { return std::get_if<Case>(&value); }

    bool operator==(const TalkSpanError&) const = default;
};

extern template struct Codec<TalkSpanError>;

} // namespace morvex
