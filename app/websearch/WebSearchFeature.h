#pragma once

#include "app/features/Feature.h"
#include "app/tools/Tool.h"
#include "app/voice/MacVoiceController.h"
#include "shared/web/WebSearchClient.h"

namespace morvex {

struct Query;

/// The tool that answers from the public web, with the key and the language of the voice assistant.
class WebSearchFeature final : public Feature {
  public:
    /// `voice` outlives this object.
    WebSearchFeature(FeatureContext& context, const MacVoiceController& voice);

    /// The tool `mac.web.search`.
    Task<ToolOutcome> search(Query query, ToolCall call);

  private:
    Task<Result<WebSearchReply>> send(WebSearchRequest request, std::stop_token stop);

    FeatureContext& context_;
    const MacVoiceController& voice_;
};

} // namespace morvex
