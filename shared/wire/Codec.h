#pragma once

#include <string>

namespace morvex {

class JsonNode;

/// The JSON form of the record `T`. A record's header declares `extern template struct Codec<T>`; one .cpp
/// file holds its `describe` function and the instantiation (see Describe.h).
template <class T> struct Codec {
    /// Appends the record to `out`.
    static void write(std::string& out, const T& record);
    /// Returns false when the node is not such a record; the node's document then holds the failure.
    static bool read(const JsonNode& node, T& record);
};

} // namespace morvex
