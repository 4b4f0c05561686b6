#include "platform/memory/MemoryVault.h"

namespace morvex {

SecretVault::Found MemoryVault::find(const std::string& service, const std::string& account) {
    if (auto refusal = note("find", account)) return {refusal, {}};
    auto found = items.find({service, account});
    if (found == items.end()) return {vaultStatus::itemNotFound, {}};
    return {vaultStatus::ok, found->second};
}

std::int32_t MemoryVault::update(const std::string& service, const std::string& account, ByteView bytes) {
    if (auto refusal = note("update", account)) return refusal;
    auto found = items.find({service, account});
    if (found == items.end()) return vaultStatus::itemNotFound;
    found->second.assign(bytes.begin(), bytes.end());
    return vaultStatus::ok;
}

std::int32_t MemoryVault::add(const std::string& service, const std::string& account, ByteView bytes) {
    if (auto refusal = note("add", account)) return refusal;
    bool added = items.emplace(Key{service, account}, Bytes(bytes.begin(), bytes.end())).second;
    return added ? vaultStatus::ok : vaultStatus::duplicateItem;
}

std::int32_t MemoryVault::remove(const std::string& service, const std::string& account) {
    if (auto refusal = note("remove", account)) return refusal;
    return items.erase({service, account}) > 0 ? vaultStatus::ok : vaultStatus::itemNotFound;
}

std::optional<Sentence> MemoryVault::text(std::int32_t status) const {
    auto found = texts.find(status);
    return found == texts.end() ? std::nullopt : std::optional(Sentence(found->second));
}

std::int32_t MemoryVault::note(const std::string& operation, const std::string& account) {
    auto call = operation + " " + account;
    calls.push_back(call);
    auto refusal = refusals.find(call);
    return refusal == refusals.end() ? vaultStatus::ok : refusal->second;
}

} // namespace morvex
