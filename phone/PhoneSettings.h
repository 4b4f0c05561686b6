#pragma once

#include "shared-apple/VaultItems.h"
#include "shared/base/Error.h"
#include "shared/wire/CompanionRecords.h"

#include <array>
#include <string>
#include <vector>

namespace morvex {

/// The settings of this phone that the Mac follows: preferences and custom apps. They are stored as a whole
/// because they are sent as a whole, and in the vault because they contain tokens and addresses. Use on the
/// phone's executor.
class PhoneSettings {
  public:
    enum class Kind { preferences, apps };
    static constexpr std::array kinds{Kind::preferences, Kind::apps};

    PhoneSettings(SecretVault& vault, std::string service) : items_(vault, std::move(service)) {}

    /// Empty if none were stored. Fails with `KeychainChyba`, or if the stored data are damaged.
    [[nodiscard]] Result<CompanionPreferences> preferences() const;
    [[nodiscard]] Result<std::vector<CompanionCustomApp>> apps() const;

    /// Stores the settings. They count as unconfirmed until `confirm`.
    Result<void> keep(const CompanionPreferences& preferences);
    Result<void> keep(const std::vector<CompanionCustomApp>& apps);

    /// Whether the Mac has the stored settings; also true if none were stored.
    [[nodiscard]] bool isConfirmed(Kind kind) const;
    void confirm(Kind kind);
    /// For a new Mac: marks everything as unconfirmed.
    Result<void> forgetConfirmations();

  private:
    template <class Record> [[nodiscard]] Result<Record> read(const std::string& account) const;
    Result<void> keep(Kind kind, const std::string& json);

    VaultItems items_;
};

} // namespace morvex
