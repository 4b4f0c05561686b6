#pragma once

#include "shared-apple/VaultItems.h"
#include "shared/base/Error.h"
#include "shared/wire/CompanionRecords.h"

#include <array>
#include <string>
#include <vector>

namespace morvex {

/// The settings of this phone that the Mac follows: preferences and custom apps. They are kept whole, for
/// they are sent whole, and in the vault, for they hold tokens and addresses. Lives on the phone's executor.
class PhoneSettings {
  public:
    enum class Kind { preferences, apps };
    static constexpr std::array kinds{Kind::preferences, Kind::apps};

    PhoneSettings(SecretVault& vault, std::string service) : items_(vault, std::move(service)) {}

    /// Empty ones before the first. Fails with `KeychainChyba`, or because what is kept is damaged.
    [[nodiscard]] Result<CompanionPreferences> preferences() const;
    [[nodiscard]] Result<std::vector<CompanionCustomApp>> apps() const;

    /// What is kept counts as unconfirmed, until `confirm`.
    Result<void> keep(const CompanionPreferences& preferences);
    Result<void> keep(const std::vector<CompanionCustomApp>& apps);

    /// Whether the Mac has what is kept. What was never kept it need not have.
    [[nodiscard]] bool isConfirmed(Kind kind) const;
    void confirm(Kind kind);
    /// For a new Mac: nothing is confirmed.
    Result<void> forgetConfirmations();

  private:
    template <class Record> [[nodiscard]] Result<Record> read(const std::string& account) const;
    Result<void> keep(Kind kind, const std::string& json);

    VaultItems items_;
};

} // namespace morvex
