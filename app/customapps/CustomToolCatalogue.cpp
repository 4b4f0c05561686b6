#include "app/customapps/CustomToolCatalogue.h"

#include "app/customapps/ServiceError.h"
#include "foundation/EitherStop.h"
#include "shared/wire/NormalizedAddress.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

using namespace std::chrono_literals;

/// For one refresh in all, and for one call with the handshakes that it needs.
constexpr Clock::Duration patience = 60s;
/// For the list of one app.
constexpr Clock::Duration patienceWithApp = 20s;

constexpr const char* notOffered = "Připojená aplikace tento nástroj nenabízí.";

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

/// An error must not carry the token to the phone.
boost::json::object answerOf(boost::json::object result, std::string appName, const std::string& token) {
    auto text = firstText(result);
    const auto* isError = result.if_contains("isError");
    if (isError && isError->is_bool() && isError->get_bool()) {
        const bool isUsable = !text.empty() && (token.empty() || !text.contains(token));
        return refused(isUsable ? std::move(text) : "Připojená aplikace vrátila chybu.");
    }
    if (auto* structured = result.if_contains("structuredContent"); structured && structured->is_object()) {
        auto answer = std::move(structured->get_object());
        answer.emplace("ok", true);
        return answer;
    }
    return {{"ok", true}, {"app", std::move(appName)}, {"text", std::move(text)}};
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

void CustomToolCatalogue::forgetTools() {
    refreshing_.request_stop();
    routes_.clear();
    tools_.clear();
    names_.clear();
    bytes_ = 0;
    outcomes_.clear();
}

void CustomToolCatalogue::clear() {
    forgetTools();
    stopCallsOfOthers({});
    apps_.clear();
}

void CustomToolCatalogue::stopCallsOfOthers(const std::map<std::string, StoredApp>& apps) {
    std::erase_if(calls_, [&](auto& calls) {
        const auto app = apps.find(calls.first);
        const auto before = apps_.find(calls.first);
        const bool stays =
            app != apps.end() && before != apps_.end() && app->second.endpoint == before->second.endpoint;
        return !stays && calls.second.request_stop();
    });
}

Task<void> CustomToolCatalogue::refresh(std::vector<StoredApp> apps) {
    forgetTools();
    refreshing_ = {};
    const EitherStop stop(refreshing_.get_token(), services_.stop);
    const auto deadline = services_.clock.sinceBoot() + patience;
    std::map<std::string, StoredApp> asked;
    for (const auto& app : apps) {
        asked.emplace(app.id, app);
        outcomes_[app.id].isAsking = true;
    }
    stopCallsOfOthers(asked);
    apps_ = std::move(asked);
    std::erase_if(servers_, [this](const auto& server) { return !apps_.contains(server.first); });
    outcomeChanged_.tell();
    for (auto& app : apps) {
        co_await ask(std::move(app), deadline, stop.token());
        if (stop.token().stop_requested()) co_return;
    }
}

bool CustomToolCatalogue::isAsking() const {
    return std::ranges::any_of(outcomes_, [](const auto& outcome) { return outcome.second.isAsking; });
}

Task<void> CustomToolCatalogue::ask(StoredApp app, Clock::Duration deadline, std::stop_token stop) {
    const auto server = serverOf(app);
    if (!server) co_return note(app.id, {.failure = ServiceError{ServiceError::InvalidAddress{}}.popis()});
    const auto begin = services_.clock.sinceBoot();
    auto caller = co_await callerFor(app.id, std::min(deadline, begin + patienceWithApp), stop);
    if (stop.stop_requested()) co_return;
    const auto list = co_await server->listTools(std::move(caller));
    if (stop.stop_requested()) co_return;
    auto outcome = list ? take(app, *list) : AppOutcome{.failure = list.error().popis()};
    outcome.took = std::chrono::duration_cast<std::chrono::milliseconds>(services_.clock.sinceBoot() - begin);
    note(app.id, std::move(outcome));
}

Task<McpServer::Caller> CustomToolCatalogue::callerFor(std::string appID, Clock::Duration deadline,
                                                       std::stop_token stop) {
    const auto turn = co_await services_.tokens.take();
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
    auto tools = customTools(app, list, [this](const std::string& name) { return names_.contains(name); });
    keepFitting(tools);
    std::vector<NamedDescription> named;
    named.reserve(tools.size());
    for (const auto& tool : tools) named.push_back({tool.remoteName, tool.seen});
    const auto mayOffer = services_.seen.compare(app.id, named);
    AppOutcome outcome{.leftOut = list.size() - tools.size()};
    for (std::size_t i = 0; i < tools.size(); ++i) {
        if (mayOffer[i]) add(app, std::move(tools[i]));
        ++(mayOffer[i] ? outcome.tools : outcome.waiting);
    }
    return outcome;
}

/// Of the tools of one app the first ones stay, as many as there is room for; takes that room.
void CustomToolCatalogue::keepFitting(std::vector<CustomTool>& tools) {
    std::size_t ofApp = 0;
    const auto beyond = std::ranges::find_if_not(tools, [&](const CustomTool& tool) {
        const auto size = tool.descriptor.summary.size() + tool.descriptor.parametersJSON.size();
        if (names_.size() == customToolLimits::mostInAll || ofApp + size > customToolLimits::longestOfApp ||
            bytes_ + size > customToolLimits::longestInAll)
            return false;
        names_.insert(tool.descriptor.name);
        ofApp += size;
        bytes_ += size;
        return true;
    });
    tools.erase(beyond, tools.end());
}

void CustomToolCatalogue::add(const StoredApp& app, CustomTool tool) {
    const auto name = tool.descriptor.name;
    Route route{app.id, std::move(tool.remoteName)};
    routes_.emplace(name, route);
    auto run = [this, route = std::move(route)](ToolCall call) { return runTool(route, std::move(call)); };
    tools_.push_back(std::make_shared<const Tool>(
        Tool{std::move(tool.descriptor), {}, isOn_, std::move(run), app.isFromMac()}));
}

Task<ToolOutcome> CustomToolCatalogue::runTool(Route route, ToolCall toolCall) {
    auto answer = co_await call(std::move(toolCall.name), std::move(route), std::move(toolCall.arguments),
                                std::move(toolCall.abandonment));
    const bool ok = isOk(answer);
    co_return ToolOutcome{ok, std::move(answer)};
}

Task<boost::json::object> CustomToolCatalogue::callTool(std::string name, boost::json::object arguments,
                                                        std::stop_token stop) {
    const auto route = routes_.find(name);
    if (route == routes_.end()) co_return refused(notOffered);
    co_return co_await call(std::move(name), route->second, std::move(arguments), std::move(stop));
}

Task<boost::json::object> CustomToolCatalogue::call(std::string name, Route route,
                                                    boost::json::object arguments, std::stop_token stop) {
    const auto current = routes_.find(name);
    const auto app = apps_.find(route.appID);
    if (current == routes_.end() || current->second != route || app == apps_.end())
        co_return refused(notOffered);
    const auto server = serverOf(app->second);
    if (!server) co_return refused(ServiceError{ServiceError::InvalidAddress{}}.popis().czech());
    auto appName = app->second.name;
    const EitherStop end(services_.stop, calls_[route.appID].get_token());
    const EitherStop either(std::move(stop), end.token());
    auto caller = co_await callerFor(route.appID, services_.clock.sinceBoot() + patience, either.token());
    if (either.token().stop_requested()) co_return refused(notOffered);
    const auto token = caller.token;
    auto result =
        co_await server->callTool(std::move(route.remoteName), std::move(arguments), std::move(caller));
    if (!result) co_return refused(result.error().popis().czech());
    co_return answerOf(*std::move(result), std::move(appName), token);
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
