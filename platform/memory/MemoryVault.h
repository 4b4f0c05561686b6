#pragma once

#include "platform/ports/SecretVault.h"

#include <map>
#include <utility>
#include <vector>

namespace morvex {

/// A vault in memory that refuses when the test demands it.
class MemoryVault final : public SecretVault {
  public:
    Found find(const std::string& service, const std::string& account) override;
    std::int32_t update(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t add(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;
    [[nodiscard]] std::optional<Sentence> text(std::int32_t status) const override;

    [[nodiscard]] Place place() override { return where; }

    void stopAsking() override { ++stops; }

    void end() override { isEnded = true; }

    Place where = Place::keyring;
    int stops = 0; ///< number of `stopAsking` calls
    bool isEnded = false;

    using Key = std::pair<std::string, std::string>;
    std::map<Key, Bytes> items;
    /// Statuses to return instead of doing the work, by operation and account, such as "update
    /// identita.podpisovy".
    std::map<std::string, std::int32_t> refusals;
    std::map<std::int32_t, std::string> texts;
    /// Every call in order, in the same form as the keys of `refusals`.
    std::vector<std::string> calls;

  private:
    std::int32_t note(const std::string& operation, const std::string& account);
};

} // namespace morvex
