#include "app/customapps/StoredApp.h"

#include "shared/wire/Describe.h"

namespace morvex {

void describe(auto& io, Is<StoredApp> auto& app) {
    io.required("id", app.id);
    io.required("name", app.name);
    io.required("endpoint", app.endpoint);
    io.optional("enabled", app.enabled);
    io.optional("source", app.source);
}

template struct Codec<StoredApp>;
template struct Codec<std::vector<StoredApp>>;

} // namespace morvex
