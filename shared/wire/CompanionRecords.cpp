#include "shared/wire/CompanionRecords.h"

#include "shared/wire/CustomAppLimits.h"
#include "shared/wire/JsonText.h"
#include "shared/wire/NormalizedAddress.h"

namespace morvex {

namespace {

bool isShort(const std::string& text) {
    constexpr std::size_t quotes = 2;
    std::string json;
    appendJsonString(json, text);
    return json.size() - quotes <= CompanionCustomApp::longestText;
}

} // namespace

bool CompanionCustomApp::isAcceptable() const {
    return id.size() <= customAppLimits::longestID && isShort(name) && isShort(endpoint) &&
           normalizedAddress(endpoint);
}

} // namespace morvex
