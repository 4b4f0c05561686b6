#include "app/websearch/WebSearchFeature.h"

#include "app/companion/ToolGate.h"
#include "app/settings/MacIntegrationSettings.h"
#include "tests/support/CompanionHarness.h"

#include <algorithm>

namespace morvex {
namespace {

class WebSearchFeatureTest : public CompanionHarness {
  protected:
    void setKey(const std::string& key) {
        EXPECT_TRUE(executor.run(features->voice.controller().setAPIKey(key)));
    }

    void turnOn() {
        EXPECT_TRUE(ended(companion->integrations().turnOn(Integration::webSearch)).has_value());
        executor.runUntilIdle();
    }

    bool isOffered() {
        return std::ranges::count(companion->toolGate().nabizeneNastroje(), "mac.web.search",
                                  &ToolDescriptor::name) == 1;
    }

    void reply(const std::string& body, int status = 200) {
        http.requests.clear();
        http.replies.assign(1, {status, body, {}});
    }

    const std::string answer = R"({"output":[{"content":[{"type":"output_text","text":"Brno",)"
                               R"("annotations":[{"url":"https://a.example","title":"A"}]}]}]})";
};

TEST_F(WebSearchFeatureTest, IsOfferedWithItsSwitchAndAKeyOnly) {
    startSecured();
    EXPECT_FALSE(isOffered());
    setKey("k");
    EXPECT_FALSE(isOffered()) << "off at first";
    turnOn();
    EXPECT_TRUE(isOffered());
    setKey("");
    EXPECT_FALSE(isOffered());
}

TEST_F(WebSearchFeatureTest, AnswersWithTheKeyAndTheLanguageInForce) {
    startSecured();
    setKey("k");
    turnOn();
    reply(answer);
    const auto first = call("mac.web.search", R"({"query":" Kde? "})");
    EXPECT_TRUE(first.ok);
    EXPECT_EQ(first.json, R"({"answer":"Brno","sources":[{"title":"A","url":"https://a.example"}]})");
    ASSERT_EQ(http.requests.size(), 1U);
    const auto& request = http.requests.front();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, "https://api.openai.example/v1/responses");
    EXPECT_EQ(request.headers.front().second, "Bearer k");
    EXPECT_EQ(request.headers.size(), 2U);
    EXPECT_EQ(request.timeLimit, std::chrono::seconds(45));
    EXPECT_TRUE(request.body.contains("Answer in language code cs.")) << "before the phone has sent one";
    CompanionPreferences preferences;
    preferences.language = "de";
    EXPECT_TRUE(executor.run(features->voice.controller().applyPreferences(std::move(preferences))));
    reply(answer);
    call("mac.web.search", R"({"query":"Wo?"})");
    EXPECT_TRUE(http.requests.front().body.contains("Answer in language code de."));
}

TEST_F(WebSearchFeatureTest, FailuresAreToldInWords) {
    startSecured();
    setKey("k");
    turnOn();

    struct Row {
        const char* arguments;
        HttpReply reply;
        const char* told;
    };

    for (const auto& row : {
             Row{"{}", {200, answer, {}}, "Chybí vyhledávací dotaz."},
             Row{R"({"query":7})", {200, answer, {}}, "Chybí vyhledávací dotaz."},
             Row{R"({"query":" "})", {200, answer, {}}, "Chybí vyhledávací dotaz."},
             Row{R"({"query":"x"})", {429, "", {}}, "Webové hledání selhalo (HTTP 429)."},
             Row{R"({"query":"x"})", {200, "x", {}}, "Webové hledání vrátilo nečitelnou odpověď."},
         }) {
        http.replies.assign(1, row.reply);
        const auto result = call("mac.web.search", row.arguments);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.json, R"({"error":")" + std::string(row.told) + "\"}");
    }
    http.replies.clear();
    EXPECT_EQ(call("mac.web.search", R"({"query":"x"})").json, R"({"error":"síť neodpovídá"})");
}

} // namespace
} // namespace morvex
