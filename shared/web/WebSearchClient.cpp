#include "shared/web/WebSearchClient.h"

#include "foundation/Text.h"
#include "foundation/TextFilter.h"
#include "shared/base/Try.h"
#include "shared/web/WebSearchError.h"
#include "shared/wire/Describe.h"
#include "shared/wire/HttpsHost.h"
#include "shared/wire/Json.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <optional>
#include <set>
#include <string_view>

namespace morvex {

void describe(auto& io, Is<WebSearchSource> auto& source) {
    io.required("title", source.title);
    io.required("url", source.url);
}

void describe(auto& io, Is<WebSearchResult> auto& result) {
    io.required("answer", result.answer);
    io.required("sources", result.sources);
}

template struct Codec<WebSearchResult>;

namespace {

constexpr std::size_t longestQuery = 600;    ///< characters
constexpr std::size_t longestAnswer = 16000; ///< characters
constexpr std::size_t mostSources = 8;
constexpr std::size_t longestTitle = 300;    ///< characters
constexpr std::size_t longestAddress = 2048; ///< bytes; a source with a longer one is dropped

std::unexpected<Error> invalidResponse() {
    return fail(WebSearchError{WebSearchError::InvalidResponse{}});
}

const boost::json::object* objectIn(const boost::json::object& object, std::string_view name) {
    const auto* value = object.if_contains(name);
    return value ? value->if_object() : nullptr;
}

const boost::json::array* arrayIn(const boost::json::object& object, std::string_view name) {
    const auto* value = object.if_contains(name);
    return value ? value->if_array() : nullptr;
}

const boost::json::string* textIn(const boost::json::object& object, std::string_view name) {
    const auto* value = object.if_contains(name);
    return value ? value->if_string() : nullptr;
}

/// The service's own words must not carry the key on.
WebSearchError failureOf(const WebSearchReply& reply, const std::string& apiKey) {
    const auto document = parseJson(reply.body);
    const auto* body = document ? document->if_object() : nullptr;
    const auto* error = body ? objectIn(*body, "error") : nullptr;
    const auto* message = error ? textIn(*error, "message") : nullptr;
    if (message && (apiKey.empty() || !std::string_view(*message).contains(apiKey)))
        return {WebSearchError::Service{Sentence(foreignWords(*message))}};
    return {WebSearchError::Service{"Webové hledání selhalo (HTTP {stav})."_sentence(reply.status)}};
}

/// Nothing unless its address is one of https with a host.
std::optional<WebSearchSource> sourceIn(const boost::json::value& value) {
    const auto* object = value.if_object();
    if (!object) return std::nullopt;
    if (const auto* inner = objectIn(*object, "url_citation")) object = inner;
    const auto* url = textIn(*object, "url");
    if (!url || url->size() > longestAddress) return std::nullopt;
    auto host = httpsHost(*url);
    if (!host) return std::nullopt;
    const auto* title = textIn(*object, "title");
    auto words = title ? trim(std::string_view(*title)) : std::string();
    if (words.empty()) words = *std::move(host);
    return WebSearchSource{excerpt(words, longestTitle), std::string(*url)};
}

/// Gathers what the elements of the output say, in their order.
class Gathering {
  public:
    void take(const boost::json::object& element) {
        const auto* action = objectIn(element, "action");
        takeSources(action ? arrayIn(*action, "sources") : nullptr);
        if (const auto* content = arrayIn(element, "content"))
            for (const auto& part : *content)
                if (const auto* object = part.if_object()) takePart(*object);
    }

    [[nodiscard]] std::string answer() const { return excerpt(trim(answer_), longestAnswer); }

    [[nodiscard]] std::vector<WebSearchSource> sources() && { return std::move(sources_); }

  private:
    void takePart(const boost::json::object& part) {
        const auto* type = textIn(part, "type");
        const auto* text = textIn(part, "text");
        if (type && *type == "output_text" && text) answer_ += std::string_view(*text);
        takeSources(arrayIn(part, "annotations"));
    }

    /// Of several with one address the first stays.
    void takeSources(const boost::json::array* values) {
        if (!values) return;
        for (const auto& value : *values) {
            if (sources_.size() == mostSources) return;
            auto source = sourceIn(value);
            if (source && urls_.insert(source->url).second) sources_.push_back(*std::move(source));
        }
    }

    std::string answer_;
    std::vector<WebSearchSource> sources_;
    std::set<std::string> urls_;
};

} // namespace

Task<Result<WebSearchResult>> WebSearchClient::search(std::string query, std::string apiKey,
                                                      std::string language, Transport transport,
                                                      Executor& workers) {
    CO_TRY(auto, asked, request(query, apiKey, language));
    CO_TRY(auto, reply, co_await transport(std::move(asked)));
    co_return co_await runOn(workers,
                             [reply = std::move(reply), key = trim(apiKey)] { return read(reply, key); });
}

Result<WebSearchRequest> WebSearchClient::request(const std::string& query, const std::string& apiKey,
                                                  const std::string& language) {
    const auto question = trim(query);
    const auto key = trim(apiKey);
    if (question.empty()) return fail(WebSearchError{WebSearchError::EmptyQuery{}});
    if (key.empty()) return fail(WebSearchError{WebSearchError::MissingKey{}});
    const boost::json::object body{
        {"model", "gpt-5"},
        {"store", false},
        {"tools", {{{"type", "web_search"}, {"search_context_size", "medium"}}}},
        {"input", "Answer in language code " + language +
                      ". Search the public web for: " + excerpt(question, longestQuery)}};
    return WebSearchRequest{"/v1/responses",
                            {{"Authorization", "Bearer " + key}, {"Content-Type", "application/json"}},
                            encode(body)};
}

Result<WebSearchResult> WebSearchClient::read(const WebSearchReply& reply, const std::string& apiKey) {
    if (reply.status == 0) return invalidResponse();
    if (reply.status < 200 || reply.status > 299) return fail(failureOf(reply, apiKey));
    const auto document = parseJson(reply.body);
    const auto* body = document ? document->if_object() : nullptr;
    const auto* output = body ? arrayIn(*body, "output") : nullptr;
    if (!output) return invalidResponse();
    Gathering gathering;
    for (const auto& element : *output)
        if (const auto* object = element.if_object()) gathering.take(*object);
    auto answer = gathering.answer();
    if (answer.empty()) return invalidResponse();
    return WebSearchResult{std::move(answer), std::move(gathering).sources()};
}

} // namespace morvex
