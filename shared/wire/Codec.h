#pragma once

#include <string>

namespace morvex {

class JsonNode;

/// The JSON form of the record `T`. A record's header declares `extern template struct Codec<T>`; one .cpp
/// file holds its `describe` function and the instantiation (see Describe.h).
template <class T> struct Codec {
    /// Appends the record to `out`.
    static void write(std::string& out, const T& record);
    /// False when the node is no such record; the failure then stands in the node's document.
    static bool read(const JsonNode& node, T& record);
};

} // namespace morvex
