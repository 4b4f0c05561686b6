#include "app/websearch/WebSearchFeature.h"

#include "app/features/FeatureContext.h"
#include "foundation/EitherStop.h"
#include "shared/wire/MacToolName.h"

#include <boost/json/array.hpp>

#include <string>
#include <utility>

namespace morvex {

struct Query {
    std::string query;
};

void describe(auto& io, Is<Query> auto& query) {
    io.required("query", query.query);
}

WebSearchFeature::WebSearchFeature(FeatureContext& context, const MacVoiceController& voice)
    : Feature(context), context_(context), voice_(voice) {
    auto isOffered = [isOn = context.whileOn(Integration::webSearch), &voice] {
        return isOn() && !voice.apiKey().empty();
    };
    context.tools.add(MacToolName::webSearch, std::move(isOffered), this, &WebSearchFeature::search);
}

Task<ToolOutcome> WebSearchFeature::search(Query query, ToolCall call) {
    const EitherStop stop(std::move(call.abandonment), context_.scope.token());
    auto transport = [this, token = stop.token()](WebSearchRequest request) {
        return send(std::move(request), token);
    };
    auto result =
        co_await WebSearchClient::search(std::move(query.query), voice_.apiKey(), voice_.textLanguage(),
                                         std::move(transport), context_.services.workers);
    if (!result) co_return ToolOutcome::refused(result.error());
    boost::json::array sources;
    for (auto& source : result->sources)
        sources.push_back({{"title", std::move(source.title)}, {"url", std::move(source.url)}});
    co_return ToolOutcome::done({{"answer", std::move(result->answer)}, {"sources", std::move(sources)}});
}

Task<Result<WebSearchReply>> WebSearchFeature::send(WebSearchRequest request, std::stop_token stop) {
    auto reply = co_await context_.services.http.send({.method = "POST",
                                                       .url = context_.services.openAI + request.path,
                                                       .headers = std::move(request.headers),
                                                       .body = std::move(request.body),
                                                       .timeLimit = WebSearchRequest::timeLimit,
                                                       .replyLimit = WebSearchRequest::replyLimit,
                                                       .stop = std::move(stop)});
    if (!reply) co_return std::unexpected(std::move(reply).error());
    co_return WebSearchReply{reply->status, std::move(reply->body)};
}

} // namespace morvex
