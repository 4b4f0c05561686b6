#pragma once

#include "shared/wire/Codec.h"

#include <vector>

namespace morvex {

/// Records in a store file: a JSON array like the wire form, but with every date as a `NumericDate`. The
/// instantiations are beside the `describe` of each record (see DescribeArchive.h).
template <class Record> struct ArchivedList {
    std::vector<Record> records;

    bool operator==(const ArchivedList&) const = default;
};

template <class Record> struct Codec<ArchivedList<Record>> {
    static void write(std::string& out, const ArchivedList<Record>& list);
    static bool read(const JsonNode& node, ArchivedList<Record>& list);
};

} // namespace morvex
