#include "shared/wire/CompanionRecords.h"

#include "shared/wire/CustomAppLimits.h"
#include "shared/wire/Describe.h"
#include "shared/wire/JsonText.h"
#include "shared/wire/NormalizedAddress.h"

namespace morvex {

namespace {

bool isShort(const std::string& text) {
    constexpr std::size_t quotes = 2;
    std::string json;
    appendJsonString(json, text);
    return json.size() - quotes <= customAppLimits::longestText;
}

} // namespace

void describe(auto& io, Is<CompanionCustomApp> auto& app) {
    io.required("id", app.id);
    io.required("name", app.name);
    io.required("endpoint", app.endpoint);
    io.required("token", app.token);
}

void describe(auto& io, Is<CompanionPlace> auto& place) {
    io.required("name", place.name);
    io.required("address", place.address);
}

void describe(auto& io, Is<CompanionPreferences> auto& preferences) {
    io.required("language", preferences.language);
    io.required("voice", preferences.voice);
    io.optional("places", preferences.places);
}

bool CompanionCustomApp::isAcceptable() const {
    return id.size() <= customAppLimits::longestID && isShort(name) && isShort(endpoint) &&
           normalizedAddress(endpoint);
}

template struct Codec<CompanionCustomApp>;
template struct Codec<CompanionPlace>;
template struct Codec<CompanionPreferences>;
template struct Codec<std::vector<CompanionCustomApp>>;
template struct Codec<std::vector<CompanionPlace>>;

} // namespace morvex
