#include "phone/PhoneArchive.h"

#include "shared/wire/Describe.h"

namespace morvex {

void describe(auto& io, Is<PhoneArchive> auto& archive) {
    io.required("schemaVersion", archive.schemaVersion);
    io.required("notes", archive.notes);
    io.required("summaries", archive.summaries);
    io.required("unconfirmed", archive.unconfirmed);
}

template struct Codec<PhoneArchive>;

} // namespace morvex
