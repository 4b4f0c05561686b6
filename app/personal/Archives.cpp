#include "app/personal/NotesArchive.h"
#include "app/personal/SummariesArchive.h"
#include "shared/wire/Describe.h"

namespace morvex {

void describe(auto& io, Is<NotesArchive> auto& archive) {
    io.required("schemaVersion", archive.schemaVersion);
    io.required("notes", archive.notes);
}

void describe(auto& io, Is<SummariesArchive> auto& archive) {
    io.required("schemaVersion", archive.schemaVersion);
    io.required("summaries", archive.summaries);
}

template struct Codec<NotesArchive>;
template struct Codec<SummariesArchive>;

} // namespace morvex
