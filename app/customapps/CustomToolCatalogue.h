#pragma once

#include "app/customapps/AppOutcome.h"
#include "app/customapps/McpServer.h"
#include "app/customapps/SeenTools.h"
#include "app/customapps/StoredApp.h"
#include "app/keychain/Keychain.h"
#include "app/tools/ToolTable.h"
#include "foundation/Clock.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "foundation/Turns.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// The tools that the custom apps lend at present, in the order of their discovery, and what came of asking
/// each app. It stays as it is until the next `refresh`. Main thread only.
class CustomToolCatalogue final : public ToolSource {
  public:
    struct Services {
        HttpClient& http;
        const Keychain& keychain;
        Turns& tokens; ///< held while a token in the keychain is not yet that of its app's address
        Executor& workers;
        Clock& clock;
        SeenTools& seen;
        std::stop_token stop; ///< ends every exchange
    };

    struct Route {
        std::string appID;
        std::string remoteName; ///< the tool's name on the server

        bool operator==(const Route&) const = default;
    };

    /// The keychain's account for the token of an app.
    static std::string tokenAccount(const std::string& appID);

    /// `isOn`: whether the user wants the tools of custom apps; asked at each offer.
    CustomToolCatalogue(Services services, std::function<bool()> isOn);

    /// Empties the catalogue and asks these apps for their tools, one after the other, for 20 seconds each
    /// and a minute in all. An app that fails, or is not reached in time, is left out and its outcome tells
    /// why. A newer refresh ends this one, which then changes nothing more. Calls of apps that are not among
    /// these, or have another address, end.
    Task<void> refresh(std::vector<StoredApp> apps);

    /// Whether a refresh waits for an app.
    [[nodiscard]] bool isAsking() const;

    /// Forgets tools and outcomes, and ends calls and a refresh that are under way.
    void clear();

    /// Runs a tool by its public name. The answer has `ok`; a failure has `error` too. Ends early, with a
    /// failure, when `stop` is requested or its app is no longer asked.
    Task<boost::json::object> callTool(std::string name, boost::json::object arguments, std::stop_token stop);

    [[nodiscard]] std::vector<std::shared_ptr<const Tool>> tools() const override { return tools_; }

    /// Null for an app that was not asked.
    [[nodiscard]] const AppOutcome* outcome(const std::string& appID) const;

    /// Called when an outcome has changed.
    [[nodiscard]] Connection onOutcome(std::function<void()> call) {
        return outcomeChanged_.connect(std::move(call));
    }

  private:
    void forgetTools();
    void stopCallsOfOthers(const std::map<std::string, StoredApp>& apps);
    Task<void> ask(StoredApp app, Clock::Duration deadline, std::stop_token stop);
    Task<McpServer::Caller> callerFor(std::string appID, Clock::Duration deadline, std::stop_token stop);
    std::shared_ptr<McpServer> serverOf(const StoredApp& app);
    AppOutcome take(const StoredApp& app, const ToolList& list);
    void keepFitting(std::vector<CustomTool>& tools);
    void add(const StoredApp& app, CustomTool tool);
    void note(const std::string& appID, AppOutcome outcome);
    Task<ToolOutcome> runTool(Route route, ToolCall call);
    /// Fails unless the name still stands for this tool.
    Task<boost::json::object> call(std::string name, Route route, boost::json::object arguments,
                                   std::stop_token stop);

    Services services_;
    std::function<bool()> isOn_;
    std::int64_t sequence_ = 0;
    std::map<std::string, Route> routes_; ///< by public name
    std::vector<std::shared_ptr<const Tool>> tools_;
    std::set<std::string> names_;                   ///< of tools that are offered or wait
    std::size_t bytes_ = 0;                         ///< of their summaries and schemas
    std::map<std::string, StoredApp> apps_;         ///< those of the last refresh, by id
    std::map<std::string, std::stop_source> calls_; ///< ends the calls of an app
    std::map<std::string, std::shared_ptr<McpServer>> servers_;
    std::map<std::string, AppOutcome> outcomes_; ///< by app
    Signal<> outcomeChanged_;
    std::stop_source refreshing_;
};

} // namespace morvex
