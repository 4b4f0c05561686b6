#include "app/agents/ClaudeCodeAdapter.h"

#include "app/agents/AgentId.h"
#include "app/agents/JsonFields.h"
#include "app/agents/OperandText.h"
#include "app/agents/Phrases.h"
#include "foundation/Text.h"
#include "shared/wire/JsonDocument.h"

#include <utility>

namespace morvex {

namespace {

const std::vector<std::string> povoleneNastroje = {
    "Read", "Grep", "Glob", "LS", "NotebookRead", "NotebookEdit", "Edit", "Write", "WebSearch", "WebFetch"};

const Sentence failed = "Claude Code skončil chybou."_sentence;
const Sentence loginFailed =
    "Přihlášení Claude Code selhalo. V Terminálu spusť `claude auth login` a potom v "
    "aplikaci klikni na Zjistit znovu."_sentence;

bool refusesLogin(const std::string& text) {
    return containsAny(lowerCase(text),
                       {"authentication failed", "sign in again", "not authenticated", "unauthorized"});
}

/// Wider than the login filter: a result or an error that only says "Invalid API key" is passed on unchanged.
bool isAuthenticationFailure(const std::string& text) {
    return refusesLogin(text) || containsAny(lowerCase(text), {"invalid api key", "expired token"});
}

Sentence throughLoginFilter(const std::string& text) {
    return refusesLogin(text) ? loginFailed : Sentence(text);
}

/// Empty if the line contains no error.
std::string errorText(const boost::json::object& line) {
    static const boost::json::object none;
    const auto* error = fields::object(line, "error");
    const auto* message = fields::object(line, "message");
    const std::pair<const boost::json::object*, const char*> places[] = {
        {&line, "error"},   {error, "message"}, {error, "detail"},
        {&line, "message"}, {message, "error"}, {&line, "result"}};
    for (const auto& [object, key] : places)
        if (auto text = fields::nonEmptyText(object ? *object : none, key)) return *std::move(text);
    return "";
}

void readAssistant(const boost::json::object& line, ZpravaAgenta& zprava) {
    const auto* message = fields::object(line, "message");
    if (!message) return;
    std::vector<std::string> texts;
    for (const auto* block : fields::objects(*message, "content")) {
        auto type = fields::text(*block, "type");
        if (type == "text")
            if (auto text = fields::text(*block, "text")) texts.push_back(*std::move(text));
        if (type == "tool_use" && !zprava.prubeh)
            if (auto name = fields::text(*block, "name")) zprava.prubeh = "Používám nástroj " + *name + ".";
    }
    if (!texts.empty()) zprava.text = join(texts, "\n");
}

void readResult(const boost::json::object& line, ZpravaAgenta& zprava) {
    const auto* flag = line.if_contains("is_error");
    bool isFailed = (flag && flag->is_bool() && flag->get_bool()) ||
                    fields::text(line, "subtype") == "error_during_execution";
    auto text =
        fields::text(line, "result").or_else([&] { return fields::text(line, "error"); }).value_or("");
    if (!isFailed)
        zprava.zaver = std::move(text);
    else
        zprava.chyba = text.empty() ? failed : throughLoginFilter(text);
}

void readFailure(const boost::json::object& line, ZpravaAgenta& zprava) {
    auto text = errorText(line);
    zprava.chyba = text.empty() ? failed : throughLoginFilter(text);
}

ZpravaAgenta read(const boost::json::object& line) {
    ZpravaAgenta zprava;
    zprava.relace = fields::text(line, "session_id");
    auto type = fields::text(line, "type");
    if (type == "system") {
        if (fields::text(line, "subtype") == "init") zprava.prubeh = sessionIsThere;
    } else if (type == "assistant") {
        readAssistant(line, zprava);
    } else if (type == "result") {
        readResult(line, zprava);
    } else if (type == "error" || type == "stream_error") {
        readFailure(line, zprava);
    } else if (isAuthenticationFailure(errorText(line))) {
        zprava.chyba = loginFailed;
    }
    return zprava;
}

} // namespace

std::string ClaudeCodeAdapter::id() const {
    return std::string(AgentId::claudeCode);
}

std::vector<std::string> ClaudeCodeAdapter::jmenaBinarky() const {
    return {"claude", "claude-code"};
}

Sentence ClaudeCodeAdapter::napoveda() const {
    return "Nainstaluj: npm i -g @anthropic-ai/claude-code"_sentence;
}

std::vector<std::string> ClaudeCodeAdapter::argumenty(std::string instrukce, std::string /*slozka*/,
                                                      std::optional<std::string> relace) const {
    std::vector<std::string> all = {"-p", operandText(std::move(instrukce)), "--output-format", "stream-json",
                                    "--verbose"};
    if (relace) {
        all.emplace_back("--resume");
        all.push_back(*std::move(relace));
    }
    all.insert(all.end(),
               {"--permission-mode", "acceptEdits", "--allowedTools", join(povoleneNastroje, ",")});
    return all;
}

std::optional<ZpravaAgenta> ClaudeCodeAdapter::precti(std::string_view line) const {
    const auto root = parseDocument(line);
    if (!root || !root->is_object()) return std::nullopt;
    auto zprava = read(root->get_object());
    return zprava == ZpravaAgenta{} ? std::nullopt : std::optional(std::move(zprava));
}

bool ClaudeCodeAdapter::isSessionGone(std::string_view chyby) const {
    return containsAny(lowerCase(chyby), {"no conversation found", "session not found",
                                          "could not find session", "invalid session"});
}

std::optional<AgentAdapter::LoginCheck> ClaudeCodeAdapter::loginCheck() const {
    return LoginCheck{
        .argumenty = {"auth", "status", "--json"},
        .limit = std::chrono::seconds(8),
        .problem = "Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola neodpověděla. V "
                   "Terminálu spusť `claude auth login` a potom zde klikni na Zjistit znovu."_sentence};
}

} // namespace morvex
