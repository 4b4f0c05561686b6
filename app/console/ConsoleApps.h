#pragma once

#include "app/console/ConsoleOutput.h"
#include "app/console/ConsoleQuestions.h"
#include "app/customapps/MacCustomAppsService.h"
#include "app/customapps/ToolNews.h"
#include "foundation/TaskScope.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// The console's commands for custom apps. Main thread.
class ConsoleApps {
  public:
    struct Services {
        MacCustomAppsService& apps;
        TaskScope& scope; ///< runs what a command starts
        const ConsoleOutput& output;
        ConsoleQuestions& questions;
    };

    /// What follows the name of the command `aplikace`.
    static constexpr const char* usage = "zap|vyp|odebrat|zmeny|videl|hlidat|nehlidat NÁZEV, znovu";

    /// All references outlive this object.
    explicit ConsoleApps(Services services) : services_(services) {}

    void print() const;

    /// Switches an app on or off, removes it, shows changes of its tools, or asks all apps again.
    void change(const std::string& words);

    /// Asks for name, address and token, and adds the app.
    void startAdding();

  private:
    struct Action;
    static const std::vector<Action>& actions();

    void switchApp(const AppSummary& app, bool on);
    void removeApp(const AppSummary& app);
    void showNews(const AppSummary& app);
    void printNews(const ToolNews& news) const;
    void markSeen(const AppSummary& app);
    void hold(const AppSummary& app, bool holds);
    Task<void> add(std::string name, std::string endpoint, std::string token);
    Task<void> turn(AppSummary app, bool on);
    Task<void> remove(AppSummary app);
    /// The only app with this name or address, or the one with this number in the list; says so otherwise.
    [[nodiscard]] std::optional<AppSummary> find(const std::string& words) const;

    Services services_;
    std::map<std::string, std::vector<SeenTool>> shown_; ///< the news that were printed last, by app
};

} // namespace morvex
