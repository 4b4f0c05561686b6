#pragma once

#include "app/customapps/AppSummary.h"
#include "app/customapps/ServiceError.h"
#include "app/customapps/StoredApp.h"
#include "app/keychain/Keychain.h"
#include "foundation/Random.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "foundation/Turns.h"
#include "platform/ports/UserDefaults.h"
#include "shared/base/Error.h"
#include "shared/wire/CompanionRecords.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace morvex {

/// The custom apps: first those that were added on this computer, then the phone's in the phone's order.
/// Their data is stored in the user defaults, their tokens in the keychain. Owned by the companion; main
/// thread only. The owner ends all tasks before it destroys this object.
class MacCustomAppsService {
  public:
    /// Reads the stored apps; there are none if the data is missing or damaged. All three references outlive
    /// this object.
    MacCustomAppsService(UserDefaults& defaults, const Keychain& keychain, Random& random);

    [[nodiscard]] std::vector<AppSummary> apps() const;

    [[nodiscard]] bool isActive() const { return active_; }

    /// Sets whether the integration is on. Listeners are notified each time it is switched off.
    void setActive(bool active);

    /// Replaces the phone's previous list; one list at a time. An entry keeps the switch that was set here.
    /// Entries that are not acceptable, or whose id is already taken, are dropped; in particular the phone
    /// must not change the token of an app of this computer. A token that the keychain refuses is lost; an
    /// empty token and the tokens of removed apps are deleted; an unchanged token is not written again. Ends
    /// when the list has been saved or could not be saved.
    Task<void> replacePhoneApps(std::vector<CompanionCustomApp> list);

    /// Changes this computer's app with the id `storedID`, or adds one. An empty token keeps the present one.
    /// Fails with `ServiceError`, `KeychainError` or the error of the save; nothing is changed or added then,
    /// except the token of an existing app.
    Task<Result<void>> save(std::optional<std::string> storedID, std::string name, std::string endpoint,
                            std::string token);

    /// Works for apps of this computer and of the phone. Switching off takes effect at once, switching on
    /// once it is saved; it fails with the error of the save.
    Task<Result<void>> setEnabled(std::string id, bool enabled);

    /// Removes an app that was added on this computer. Apps of the phone stay.
    Task<void> remove(std::string id);

    /// Called after each change.
    [[nodiscard]] Connection priZmene(std::function<void()> zavolat) {
        return priZmene_.connect(std::move(zavolat));
    }

  private:
    [[nodiscard]] bool hasMacApp(const std::string& id) const;
    [[nodiscard]] std::vector<CompanionCustomApp> accepted(std::vector<CompanionCustomApp> list) const;
    [[nodiscard]] StoredApp fromPhone(const CompanionCustomApp& entry) const;
    Task<void> keepTokens(std::vector<CompanionCustomApp> entries);
    void keep();
    /// The change takes effect once it is saved. If the list has changed meanwhile, the change is applied to
    /// the new list.
    Task<Result<void>> keepOnceSaved(std::function<void(std::vector<StoredApp>&)> change);

    UserDefaults& defaults_;
    const Keychain& keychain_;
    Random& random_;
    std::vector<StoredApp> apps_;
    bool active_ = true;
    Turns saving_;                    ///< saves of changes that are not in effect yet
    std::set<std::string> turningOn_; ///< apps that are being switched on
    Signal<> priZmene_;
};

} // namespace morvex
