#include "shared-apple/KeychainStore.h"

#include "shared/base/Try.h"
#include "shared/wire/Json.h"

namespace morvex {

namespace {

const std::string signingAccount = "identita.podpisovy";
const std::string agreementAccount = "identita.dohodovy";
const std::string peerAccount = "parovani.protejsek";

} // namespace

Result<std::shared_ptr<const DeviceIdentity>> KeychainStore::nactiIdentitu() {
    TRY(auto, signing, items_.read(signingAccount));
    if (!signing) return nullptr;
    auto podpisovy = SigningPrivateKey::fromRaw(*signing);
    wipe(*signing);
    TRY(auto, agreement, items_.read(agreementAccount));
    if (!agreement) return nullptr;
    auto dohodovy = AgreementPrivateKey::fromRaw(*agreement);
    wipe(*agreement);
    if (!podpisovy) return fail(podpisovy.error());
    if (!dohodovy) return fail(dohodovy.error());
    return std::make_shared<const DeviceIdentity>(*std::move(podpisovy), *std::move(dohodovy));
}

Result<void> KeychainStore::ulozIdentitu(std::shared_ptr<const DeviceIdentity> identita) {
    CHECK(items_.write(signingAccount, identita->podpisovy().exportRaw().view()));
    return items_.write(agreementAccount, identita->dohodovy().exportRaw().view());
}

Result<void> KeychainStore::smazIdentitu() {
    CHECK(items_.erase(signingAccount));
    return items_.erase(agreementAccount);
}

Result<std::optional<PairedPeer>> KeychainStore::nactiProtejsek() {
    TRY(auto, bytes, items_.read(peerAccount));
    if (!bytes) return std::nullopt;
    return decode<PairedPeer>(*bytes);
}

Result<void> KeychainStore::ulozProtejsek(const PairedPeer& protejsek) {
    return items_.write(peerAccount, asBytes(encode(protejsek)));
}

Result<void> KeychainStore::smazProtejsek() {
    return items_.erase(peerAccount);
}

} // namespace morvex
