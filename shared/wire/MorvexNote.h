#pragma once

#include "shared/base/Date.h"
#include "shared/base/Uuid.h"
#include "shared/wire/ArchivedList.h"

#include <cstdint>
#include <optional>
#include <string>

namespace morvex {

/// A note that phone and Mac keep in sync. A deleted note stays as a record with `deletedAt` set.
struct MorvexNote {
    Uuid id;
    std::string title;
    std::string body;
    Date createdAt;
    Date updatedAt;
    std::uint64_t revision = 0;
    std::optional<Date> deletedAt;

    /// Whether this version of the note replaces `stored`: the higher revision wins; at equal revisions the
    /// later change.
    [[nodiscard]] bool supersedes(const MorvexNote& stored) const {
        return revision != stored.revision ? revision > stored.revision : updatedAt > stored.updatedAt;
    }

    bool operator==(const MorvexNote&) const = default;
};

/// The request id with which a note is sent.
std::string requestID(const MorvexNote& note);
/// The request id of the note's acknowledgement.
std::string noteAckID(const Uuid& id);

extern template struct Codec<MorvexNote>;
extern template struct Codec<ArchivedList<MorvexNote>>;

} // namespace morvex
