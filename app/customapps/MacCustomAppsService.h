#pragma once

#include "app/customapps/AppSummary.h"
#include "app/customapps/CustomToolCatalogue.h"
#include "app/customapps/SeenTools.h"
#include "app/customapps/ServiceError.h"
#include "app/customapps/StoredApp.h"
#include "app/keychain/Keychain.h"
#include "foundation/Random.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "foundation/TaskScope.h"
#include "foundation/Turns.h"
#include "platform/ports/RightsChanges.h"
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
/// Their data is stored in the user defaults, their tokens in the keychain. Their servers speak MCP and lend
/// tools. Owned by the companion; main
/// thread only. The owner ends all tasks before it destroys this object.
class MacCustomAppsService {
  public:
    struct Services {
        UserDefaults& defaults;
        const Keychain& keychain;
        Random& random;
        HttpClient& http;
        Executor& workers;
        Clock& clock;
        SeenTools& seen;
        TaskScope& scope; ///< refreshes run there; the owner joins it before it destroys this object
    };

    /// Reads the stored apps; there are none if the data is missing or damaged. Asks no server.
    explicit MacCustomAppsService(Services services);

    [[nodiscard]] std::vector<AppSummary> apps() const;

    /// The tools that the apps lend at present.
    [[nodiscard]] const CustomToolCatalogue& catalogue() const { return catalogue_; }

    /// Asks the apps for their tools. While it runs the catalogue is empty, and fills as they answer; then
    /// `onChange` tells, unless there was nobody to ask and nothing to take away. Each change of an app
    /// starts it in the background.
    Task<void> refresh();

    /// The same, in the background.
    void refreshSoon() { services_.scope.spawn(refresh()); }

    /// Runs a tool by its public name; never fails: a failure is an object with `ok` false and `error`.
    Task<boost::json::object> callTool(std::string name, boost::json::object arguments) {
        return catalogue_.callTool(std::move(name), std::move(arguments), {});
    }

    /// The tools of an app that have changed or are new.
    [[nodiscard]] std::vector<SeenTool> news(const std::string& id) const { return services_.seen.news(id); }

    /// A person has looked at these news of an app's tools.
    void looked(const std::string& id, const std::vector<SeenTool>& shown);
    /// Why what was seen of the tools could not be saved.
    [[nodiscard]] std::optional<Sentence> problem() const;
    /// Whether changed and new tools of the app wait until a person has looked.
    void setHoldsChanges(const std::string& id, bool holds);

    [[nodiscard]] bool isActive() const { return active_; }

    /// Sets whether the integration is on. Off empties the catalogue, and `onChange` tells; on does nothing
    /// more: the caller runs `refresh`.
    void setActive(bool active);

    /// Replaces the phone's previous list; one list at a time. An entry keeps the switch that was set here.
    /// Entries that are not acceptable, or whose id is already taken, are dropped; in particular the phone
    /// must not change the token of an app of this computer. A token that the keychain refuses is lost; an
    /// empty token and the tokens of removed apps are deleted; an unchanged token is not written again. Ends
    /// when the list has been saved or could not be saved. A list that changes nothing does not disturb a
    /// refresh that is under way.
    Task<void> replacePhoneApps(std::vector<CompanionCustomApp> list);

    /// Changes this computer's app with the id `storedID`, or adds one. An empty token keeps the present one.
    /// Fails with `ServiceError`, `KeychainError` or the error of the save; nothing is changed or added then.
    /// A new token never goes to the address before, nor the token before to a new address with one.
    Task<Result<void>> save(std::optional<std::string> storedID, std::string name, std::string endpoint,
                            std::string token);

    /// Works for apps of this computer and of the phone. Switching off takes effect at once, switching on
    /// once it is saved; it fails with the error of the save.
    Task<Result<void>> setEnabled(std::string id, bool enabled);

    /// Removes an app that was added on this computer. Apps of the phone stay.
    Task<void> remove(std::string id);

    /// Called when the catalogue was refreshed or emptied: the tools on offer may be others.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

    /// For views: called when `apps()` has changed.
    [[nodiscard]] Connection onRowsChange(std::function<void()> call) {
        return rowsChanged_.connect(std::move(call));
    }

  private:
    [[nodiscard]] bool hasMacApp(const std::string& id) const;
    [[nodiscard]] std::vector<CompanionCustomApp> accepted(std::vector<CompanionCustomApp> list) const;
    [[nodiscard]] StoredApp fromPhone(const CompanionCustomApp& entry) const;
    /// Whether a token has changed.
    Task<bool> keepTokens(std::vector<CompanionCustomApp> entries);
    /// `token` is absent where there was none.
    Task<void> restoreToken(std::string account, std::optional<std::string> token);
    void tellChange();
    void keep();
    /// The change takes effect once it is saved. If the list has changed meanwhile, the change is applied to
    /// the new list.
    Task<Result<void>> keepOnceSaved(std::function<void(std::vector<StoredApp>&)> change);

    /// The list of apps has changed: asks them anew.
    void appsChanged();
    [[nodiscard]] AppSummary summaryOf(const StoredApp& app) const;

    Services services_;
    RightsChanges changes_;
    std::vector<StoredApp> apps_;
    bool active_ = true;
    std::set<std::string> turningOn_; ///< apps that are being switched on
    Turns tokens_;                    ///< held while a token and the address of its app are changed
    CustomToolCatalogue catalogue_;
    bool isToolKnown_ = false; ///< somebody may have been told of a tool that the catalogue had
    Signal<> changed_;
    Signal<> rowsChanged_;
    std::uint64_t refreshes_ = 0;
    Connection outcomeChanged_;
    Connection newsChanged_;
};

} // namespace morvex
