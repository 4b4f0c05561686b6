#include "app/mail/bridge/ScriptRun.h"

#include "app/mail/bridge/SurrogateRepair.h"
#include "foundation/Text.h"
#include "shared/wire/Describe.h"
#include "shared/wire/Json.h"

#include <boost/json/object.hpp>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

namespace morvex::scriptRun {

namespace {

constexpr std::string_view executionError = "execution error:";

bool containsAny(std::string_view text, std::initializer_list<std::string_view> parts) {
    return std::ranges::any_of(parts, [text](std::string_view part) { return text.contains(part); });
}

/// The last line that begins like an error, else the last one that is not empty; trimmed.
std::string lineOfError(std::string_view errors) {
    std::string last;
    for (;;) {
        const auto lineEnd = errors.rfind('\n');
        auto line = trim(errors.substr(lineEnd + 1));
        if (line.starts_with(executionError) || line.starts_with("Error:")) return line;
        if (last.empty()) last = std::move(line);
        if (lineEnd == std::string_view::npos) return last;
        errors = errors.substr(0, lineEnd);
    }
}

void removeEvery(std::string_view part, std::string& text) {
    std::string kept;
    std::size_t from = 0;
    for (auto found = text.find(part); found != std::string::npos; found = text.find(part, from)) {
        kept.append(text, from, found - from);
        from = found + part.size();
    }
    text = kept.append(text, from);
}

/// Takes a number such as "(-2700)" from the end.
std::string withoutNumber(std::string_view message) {
    auto text = trim(message);
    if (!text.ends_with(')')) return text;
    const auto bracket = text.rfind("(-");
    if (bracket == std::string::npos) return text;
    const auto digits = std::string_view(text).substr(bracket + 2, text.size() - bracket - 3);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return text;
    return trim(std::string_view(text).substr(0, bracket));
}

} // namespace

std::string program(std::string_view body, const boost::json::object& parameters) {
    std::string text = "const PARAMS = ";
    text += encode(parameters);
    text += ";\nfunction main() {\n";
    text += body;
    text += "\n}\nJSON.stringify(main() ?? null);";
    return text;
}

template <class T> Result<T> result(std::string_view output) {
    const auto root = parseDocument(withoutLoneSurrogates(trim(output)));
    if (!root) return fail(unreadable());
    const JsonPath path;
    std::optional<Error> ignored;
    T value{};
    if (!readJson(JsonNode{*root, path, ignored}, value)) return fail(unreadable());
    return value;
}

template Result<std::string> result(std::string_view output);
template Result<std::vector<std::string>> result(std::string_view output);
template Result<std::vector<MailZprava>> result(std::string_view output);

MailChyba unreadable() {
    return {MailChyba::Selhalo{"Mail vrátil něco, čemu nerozumím."_sentence}};
}

MailChyba failure(std::string_view errors, End end) {
    if (end == End::atTimeLimit) return {MailChyba::Neodpovedel{}};
    const auto lower = lowerCase(errors);
    if (containsAny(lower, {"-1743", "not authorized", "not allowed"})) return {MailChyba::Nepovoleno{}};
    // A Mail whose scripting dictionary differs says this.
    if (containsAny(lower, {"message not understood", "doesn't understand"}))
        return {MailChyba::NepodporovaneRozhrani{}};
    auto message = lineOfError(errors);
    removeEvery("execution error: ", message);
    message = withoutNumber(message);
    if (message.empty()) return {MailChyba::Selhalo{"Mail operaci odmítl."_sentence}};
    return {MailChyba::Selhalo{Sentence(std::move(message))}};
}

} // namespace morvex::scriptRun
