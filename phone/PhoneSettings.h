#pragma once

#include "platform/ports/SecretVault.h"
#include "shared/base/Error.h"
#include "shared/wire/CompanionRecords.h"

#include <string>
#include <vector>

namespace morvex {

/// The settings of this phone that the Mac follows: preferences and custom apps. They are kept whole, for
/// they are sent whole, and in the vault, for they hold tokens and addresses. Lives on the phone's executor.
class PhoneSettings {
  public:
    PhoneSettings(SecretVault& vault, std::string service) : vault_(vault), service_(std::move(service)) {}

    /// Empty ones before the first. Fails with `KeychainChyba`, or because what is kept is damaged.
    [[nodiscard]] Result<CompanionPreferences> preferences() const;
    [[nodiscard]] Result<std::vector<CompanionCustomApp>> apps() const;

    Result<void> keep(const CompanionPreferences& preferences);
    Result<void> keep(const std::vector<CompanionCustomApp>& apps);

    /// Whether the Mac may not have them: so after each pairing, until `confirm`.
    [[nodiscard]] bool isUnconfirmed() const;
    Result<void> forgetConfirmation();
    void confirm();

  private:
    template <class Record> [[nodiscard]] Result<Record> read(const std::string& account) const;
    Result<void> write(const std::string& account, const std::string& json);

    SecretVault& vault_;
    std::string service_;
};

} // namespace morvex
