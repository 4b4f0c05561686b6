#pragma once

#include "shared/base/Date.h"
#include "shared/wire/JsonNode.h"

#include <string>

namespace morvex {

/// A date in a store file, written as the number of `secondsSince2001`.
struct NumericDate {
    Date date;

    NumericDate() = default;

    NumericDate(Date given) : date(given) {}

    operator Date() const { return date; }

    bool operator==(const NumericDate&) const = default;
};

void writeJson(std::string& out, NumericDate date);
bool readJson(const JsonNode& node, NumericDate& date);

} // namespace morvex
