#include "app/customapps/CustomToolCatalogue.h"

#include "app/customapps/ServiceError.h"
#include "foundation/EitherStop.h"
#include "shared/wire/NormalizedAddress.h"

#include <utility>

namespace morvex {

namespace {

using namespace std::chrono_literals;

/// For one refresh in all, and for one call with the handshakes that it needs.
constexpr Clock::Duration patience = 60s;

boost::json::object refused(std::string sentence) {
    return {{"ok", false}, {"error", std::move(sentence)}};
}

std::string firstText(const boost::json::object& result) {
    const auto* content = result.if_contains("content");
    const auto* list = content ? content->if_array() : nullptr;
    const auto* first = list && !list->empty() ? list->front().if_object() : nullptr;
    const auto* text = first ? first->if_contains("text") : nullptr;
    return text && text->is_string() ? std::string(text->get_string()) : std::string();
}

boost::json::object answerOf(const boost::json::object& result, const std::string& appName) {
    auto text = firstText(result);
    const auto* isError = result.if_contains("isError");
    if (isError && isError->is_bool() && isError->get_bool())
        return refused(text.empty() ? "Připojená aplikace vrátila chybu." : std::move(text));
    if (const auto* structured = result.if_contains("structuredContent");
        structured && structured->is_object()) {
        auto answer = structured->get_object();
        answer.emplace("ok", true);
        return answer;
    }
    return {{"ok", true}, {"app", appName}, {"text", std::move(text)}};
}

/// The Boolean `ok` of an answer.
bool isOk(const boost::json::object& answer) {
    const auto* ok = answer.if_contains("ok");
    return ok && ok->is_bool() && ok->get_bool();
}

} // namespace

std::string CustomToolCatalogue::tokenAccount(const std::string& appID) {
    return "custom.app." + appID + ".token";
}

CustomToolCatalogue::CustomToolCatalogue(Services services, std::function<bool()> isOn)
    : services_(std::move(services)), isOn_(std::move(isOn)) {}

void CustomToolCatalogue::clear() {
    refreshing_.request_stop();
    routes_.clear();
    tools_.clear();
    count_ = 0;
    bytes_ = 0;
    apps_.clear();
    outcomes_.clear();
}

Task<void> CustomToolCatalogue::refresh(std::vector<StoredApp> apps) {
    clear();
    refreshing_ = {};
    const EitherStop stop(refreshing_.get_token(), services_.stop);
    const auto deadline = services_.clock.sinceBoot() + patience;
    for (const auto& app : apps) {
        apps_.emplace(app.id, app);
        outcomes_[app.id].isAsking = true;
    }
    std::erase_if(servers_, [this](const auto& server) { return !apps_.contains(server.first); });
    outcomeChanged_.tell();
    for (auto& app : apps) {
        co_await ask(std::move(app), deadline, stop.token());
        if (stop.token().stop_requested()) co_return;
    }
}

Task<void> CustomToolCatalogue::ask(StoredApp app, Clock::Duration deadline, std::stop_token stop) {
    const auto server = serverOf(app);
    if (!server) co_return note(app.id, {.failure = ServiceError{ServiceError::InvalidAddress{}}.popis()});
    const auto begin = services_.clock.sinceBoot();
    const auto list = co_await server->listTools(co_await callerFor(app.id, deadline, stop));
    if (stop.stop_requested()) co_return;
    auto outcome = list ? take(app, *list) : AppOutcome{.failure = list.error().popis()};
    outcome.took = std::chrono::duration_cast<std::chrono::milliseconds>(services_.clock.sinceBoot() - begin);
    note(app.id, std::move(outcome));
}

Task<McpServer::Caller> CustomToolCatalogue::callerFor(std::string appID, Clock::Duration deadline,
                                                       std::stop_token stop) {
    auto token = co_await services_.keychain.read(tokenAccount(appID));
    co_return McpServer::Caller{token.value_or(""), deadline, std::move(stop)};
}

std::shared_ptr<McpServer> CustomToolCatalogue::serverOf(const StoredApp& app) {
    const auto url = normalizedAddress(app.endpoint);
    if (!url) return nullptr;
    auto& server = servers_[app.id];
    if (!server || server->url() != *url)
        server = std::make_shared<McpServer>(
            McpServer::Services{services_.http, services_.workers, services_.clock, sequence_}, *url);
    return server;
}

AppOutcome CustomToolCatalogue::take(const StoredApp& app, const ToolList& list) {
    auto tools = customTools(app, list, [this](const std::string& name) { return routes_.contains(name); });
    std::erase_if(tools, [this](const CustomTool& tool) { return !fits(tool); });
    std::vector<NamedDescription> named;
    named.reserve(tools.size());
    for (const auto& tool : tools) named.push_back({tool.remoteName, tool.seen});
    const auto mayOffer = services_.seen.compare(app.id, named);
    AppOutcome outcome;
    for (std::size_t i = 0; i < tools.size(); ++i) {
        if (mayOffer[i]) add(app, std::move(tools[i]));
        ++(mayOffer[i] ? outcome.tools : outcome.waiting);
    }
    return outcome;
}

/// Takes its room, if there is any.
bool CustomToolCatalogue::fits(const CustomTool& tool) {
    const auto size = tool.descriptor.summary.size() + tool.descriptor.parametersJSON.size();
    if (count_ == customToolLimits::mostInAll || bytes_ + size > customToolLimits::longestInAll) return false;
    ++count_;
    bytes_ += size;
    return true;
}

void CustomToolCatalogue::add(const StoredApp& app, CustomTool tool) {
    const auto name = tool.descriptor.name;
    routes_.emplace(name, Route{app.id, std::move(tool.remoteName)});
    auto run = [this](ToolCall call) { return runTool(std::move(call)); };
    tools_.push_back(std::make_shared<const Tool>(
        Tool{std::move(tool.descriptor), {}, isOn_, std::move(run), app.isFromMac()}));
}

Task<ToolOutcome> CustomToolCatalogue::runTool(ToolCall call) {
    auto answer =
        co_await callTool(std::move(call.name), std::move(call.arguments), std::move(call.abandonment));
    const bool ok = isOk(answer);
    co_return ToolOutcome{ok, std::move(answer)};
}

Task<boost::json::object> CustomToolCatalogue::callTool(std::string name, boost::json::object arguments,
                                                        std::stop_token stop) {
    const auto route = routes_.find(name);
    const auto app = route == routes_.end() ? apps_.end() : apps_.find(route->second.appID);
    if (app == apps_.end()) co_return refused("Připojená aplikace tento nástroj nenabízí.");
    const auto server = serverOf(app->second);
    if (!server) co_return refused(ServiceError{ServiceError::InvalidAddress{}}.popis().czech());
    const auto remoteName = route->second.remoteName;
    const auto appName = app->second.name;
    const EitherStop either(std::move(stop), services_.stop);
    auto caller =
        co_await callerFor(route->second.appID, services_.clock.sinceBoot() + patience, either.token());
    auto result = co_await server->callTool(remoteName, std::move(arguments), std::move(caller));
    if (!result) co_return refused(result.error().popis().czech());
    co_return answerOf(*result, appName);
}

const AppOutcome* CustomToolCatalogue::outcome(const std::string& appID) const {
    const auto found = outcomes_.find(appID);
    return found == outcomes_.end() ? nullptr : &found->second;
}

void CustomToolCatalogue::note(const std::string& appID, AppOutcome outcome) {
    outcomes_[appID] = std::move(outcome);
    outcomeChanged_.tell();
}

} // namespace morvex
