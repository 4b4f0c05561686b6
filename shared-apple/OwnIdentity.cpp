#include "shared-apple/OwnIdentity.h"

#include "shared/base/Try.h"

namespace morvex {

Result<std::shared_ptr<const DeviceIdentity>> ownIdentity(IdentityStore& store) {
    TRY(auto, stored, store.nactiIdentitu());
    if (stored) return stored;
    CHECK(store.smazIdentitu());
    auto fresh = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    CHECK(store.ulozIdentitu(fresh));
    return fresh;
}

} // namespace morvex
