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

/// The custom apps: those that were added on this computer, and behind them the phone's, in its order. What
/// they are is kept in the user defaults, their tokens in the keychain. Owned by the companion; main thread
/// only. The owner ends all tasks before this object goes.
class MacCustomAppsService {
  public:
    /// Reads what is kept; without it, or when it is damaged, there are no apps. All three outlive this
    /// object.
    MacCustomAppsService(UserDefaults& defaults, const Keychain& keychain, Random& random);

    [[nodiscard]] std::vector<AppSummary> apps() const;

    [[nodiscard]] bool isActive() const { return active_; }

    /// Whether the integration is on. Every switching off is told.
    void setActive(bool active);

    /// Takes the phone's list in place of the one before; one list at a time. An entry keeps the switch that
    /// was set here. Dropped are entries that are not acceptable and those with an id that is taken, by an
    /// app of this computer above all: the phone has no say over that one's token. A token that the keychain
    /// refuses is lost, an empty one is removed, and so are those of apps that are gone; one that is there
    /// already is left alone. Ends when the list is on the disk, or could not be saved.
    Task<void> replacePhoneApps(std::vector<CompanionCustomApp> list);

    /// Changes the app of this computer with the id `storedID`, else adds one. An empty token leaves the
    /// present one. Fails with `ServiceError`, `KeychainError` or what prevented the save, and nothing is
    /// changed or added then but the token of an app that is there.
    Task<Result<void>> save(std::optional<std::string> storedID, std::string name, std::string endpoint,
                            std::string token);

    /// Of an app of either source. Off counts at once, on once it is saved; it fails with what prevented
    /// that.
    Task<Result<void>> setEnabled(std::string id, bool enabled);

    /// Only what was added on this computer can be removed here.
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
    /// The change counts once it is saved. It is made anew on a list that was changed meanwhile.
    Task<Result<void>> keepOnceSaved(std::function<void(std::vector<StoredApp>&)> change);

    UserDefaults& defaults_;
    const Keychain& keychain_;
    Random& random_;
    std::vector<StoredApp> apps_;
    bool active_ = true;
    Turns saving_;                    ///< of changes that do not count yet
    std::set<std::string> turningOn_; ///< apps whose switching on is among them
    Signal<> priZmene_;
};

} // namespace morvex
