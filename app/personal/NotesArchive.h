#pragma once

#include "shared/wire/MorvexNote.h"

#include <cstdint>

namespace morvex {

/// The file of the notes store.
struct NotesArchive {
    std::int64_t schemaVersion = 1;
    ArchivedList<MorvexNote> notes; ///< including deleted ones, in the order of their arrival

    bool operator==(const NotesArchive&) const = default;
};

extern template struct Codec<NotesArchive>;

} // namespace morvex
