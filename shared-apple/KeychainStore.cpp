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
    TRY(auto, signing, read(signingAccount));
    if (!signing) return nullptr;
    auto podpisovy = SigningPrivateKey::fromRaw(*signing);
    wipe(*signing);
    TRY(auto, agreement, read(agreementAccount));
    if (!agreement) return nullptr;
    auto dohodovy = AgreementPrivateKey::fromRaw(*agreement);
    wipe(*agreement);
    if (!podpisovy) return fail(podpisovy.error());
    if (!dohodovy) return fail(dohodovy.error());
    return std::make_shared<const DeviceIdentity>(*std::move(podpisovy), *std::move(dohodovy));
}

Result<void> KeychainStore::ulozIdentitu(std::shared_ptr<const DeviceIdentity> identita) {
    if (auto written = write(signingAccount, identita->podpisovy().exportRaw().view()); !written)
        return written;
    return write(agreementAccount, identita->dohodovy().exportRaw().view());
}

Result<void> KeychainStore::smazIdentitu() {
    if (auto erased = erase(signingAccount); !erased) return erased;
    return erase(agreementAccount);
}

Result<std::optional<PairedPeer>> KeychainStore::nactiProtejsek() {
    TRY(auto, bytes, read(peerAccount));
    if (!bytes) return std::nullopt;
    return decode<PairedPeer>(*bytes);
}

Result<void> KeychainStore::ulozProtejsek(const PairedPeer& protejsek) {
    return write(peerAccount, asBytes(encode(protejsek)));
}

Result<void> KeychainStore::smazProtejsek() {
    return erase(peerAccount);
}

Result<std::optional<Bytes>> KeychainStore::read(const std::string& account) {
    auto found = vault_.find(sluzba_, account);
    if (found.status == vaultStatus::itemNotFound) return std::nullopt;
    if (found.status != vaultStatus::ok) return refusal(found.status, "čtení ", account);
    return std::move(found.bytes);
}

Result<void> KeychainStore::write(const std::string& account, ByteView bytes) {
    if (vault_.update(sluzba_, account, bytes) == vaultStatus::ok) return {};
    // Whatever kept the update from happening: an item may be missing behind more statuses than one.
    auto status = vault_.add(sluzba_, account, bytes);
    if (status != vaultStatus::ok) return refusal(status, "zápis ", account);
    return {};
}

Result<void> KeychainStore::erase(const std::string& account) {
    auto status = vault_.remove(sluzba_, account);
    if (status == vaultStatus::ok || status == vaultStatus::itemNotFound) return {};
    return refusal(status, "mazání ", account);
}

std::unexpected<Error> KeychainStore::refusal(std::int32_t status, const char* verb,
                                              const std::string& account) const {
    return fail(KeychainChyba{status, verb + account, vault_.text(status)});
}

} // namespace morvex
