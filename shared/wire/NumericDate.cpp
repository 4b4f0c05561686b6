#include "shared/wire/NumericDate.h"

#include "shared/wire/JsonText.h"

namespace morvex {

void writeJson(std::string& out, NumericDate date) {
    appendJsonNumber(out, secondsSince2001(date));
}

bool readJson(const JsonNode& node, NumericDate& date) {
    double seconds = 0;
    if (!node.read(seconds)) return false;
    const auto found = dateSince2001(seconds);
    if (!found) return node.fail(DecodeError::Reason::outOfRange);
    date = *found;
    return true;
}

} // namespace morvex
