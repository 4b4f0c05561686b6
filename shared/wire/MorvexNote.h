#pragma once

#include "shared/base/Date.h"
#include "shared/base/Uuid.h"
#include "shared/wire/ArchivedList.h"

#include <cstdint>
#include <optional>
#include <string>

namespace morvex {

/// A note that phone and Mac keep in step. A deleted one stays as a record, with `deletedAt`.
struct MorvexNote {
    Uuid id;
    std::string title;
    std::string body;
    Date createdAt;
    Date updatedAt;
    std::uint64_t revision = 0;
    std::optional<Date> deletedAt;

    /// Which of two versions of one note counts: the higher revision, at equal ones the later change.
    [[nodiscard]] bool supersedes(const MorvexNote& stored) const {
        return revision != stored.revision ? revision > stored.revision : updatedAt > stored.updatedAt;
    }

    bool operator==(const MorvexNote&) const = default;
};

/// The request id under which a note travels.
std::string requestID(const MorvexNote& note);
/// That of its acknowledgement.
std::string noteAckID(const Uuid& id);

extern template struct Codec<MorvexNote>;
extern template struct Codec<ArchivedList<MorvexNote>>;

} // namespace morvex
