#pragma once

#include "app/mail/bridge/MailAccountsError.h"
#include "app/mail/bridge/MailBridge.h"
#include "foundation/Signal.h"
#include "platform/ports/RightsChanges.h"
#include "platform/ports/UserDefaults.h"

#include <functional>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// The accounts of the Mail application: which there are, which of them the user allows, and which one sends
/// where none is named. Until the user has chosen for the first time, every account is allowed. An account
/// that Mail no longer has is forgotten; when it comes back, it is off. The choice is stored in the user
/// defaults, the list comes from Mail by `obnovit`. Owned by the companion; main thread only. The owner ends
/// all tasks before it destroys this object.
class MacMailAccounts {
  public:
    using Error = MailAccountsError;

    struct Services {
        UserDefaults& defaults;
        MailBridge& bridge;
    };

    /// Reads the stored choice.
    explicit MacMailAccounts(Services services);

    /// The names of the accounts as Mail gives them.
    [[nodiscard]] const std::vector<std::string>& available() const { return available_; }

    /// The allowed accounts, in the order of `available`.
    [[nodiscard]] std::vector<std::string> povolene() const;

    [[nodiscard]] bool isAllowed(const std::string& ucet) const;

    /// The account that sends where none is named. It counts only while it is allowed.
    [[nodiscard]] const std::optional<std::string>& defaultAccount() const { return defaultAccount_; }

    /// Why the list could not be loaded or is empty; for the settings.
    [[nodiscard]] const std::optional<Sentence>& problem() const { return problem_; }

    /// Loads the list from Mail. Where that fails, the old list stays. Of several loads at a time only the
    /// one that began last counts.
    Task<void> obnovit(std::stop_token stop = {});

    /// Allows an account or forbids it; the first choice keeps all others as they are, which is allowed.
    /// Forbidding takes effect at once, allowing once it is saved; it fails with the error of the save.
    Task<Result<void>> nastav(std::string ucet, bool povoleno);

    /// Nothing or an empty name: no account sends by default.
    void nastavVychozi(std::optional<std::string> ucet);

    /// The name of the account to use, as Mail spells it; `jmeno` is compared without regard to case and
    /// diacritics and fails with `AccountNotEnabled`. Without a name: the default account, else the only
    /// allowed one, else nothing.
    [[nodiscard]] Result<std::optional<std::string>> ucetProOdeslani(std::string_view jmeno = {}) const;

    /// Called after each load and each choice.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

  private:
    void take(std::vector<std::string> accounts);
    void forbid(const std::string& ucet);
    Task<Result<void>> allow(std::string ucet);
    [[nodiscard]] std::set<std::string> chosen() const;
    void keep();

    Services services_;
    RightsChanges changes_;
    std::vector<std::string> available_;
    std::set<std::string> selected_;
    bool selectionConfigured_ = false;
    std::optional<std::string> defaultAccount_;
    std::optional<Sentence> problem_;
    std::uint64_t loads_ = 0;
    std::set<std::string> turningOn_; ///< accounts that are being allowed
    Signal<> changed_;
};

} // namespace morvex
