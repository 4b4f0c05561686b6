#include "shared/web/WebSearchClient.h"

#include "shared/web/WebSearchError.h"
#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

const std::string unreadable = "Webové hledání vrátilo nečitelnou odpověď.";

WebSearchRequest request(const std::string& query) {
    return WebSearchClient::request(query, " key\n", "cs").value();
}

/// The input of the request's body.
std::string input(const std::string& query) {
    return std::string(parseJson(request(query).body).value().at("input").as_string());
}

/// The result as JSON, or the words of the failure.
std::string told(const std::string& body, int status = 200) {
    const auto result = WebSearchClient::read({status, body}, "klic");
    return result ? encode(*result) : result.error().popis().czech();
}

/// What an output with one message says: its answer is "a".
std::string withAnnotations(const std::string& annotations) {
    return told(R"({"output":[{"content":[{"type":"output_text","text":"a","annotations":)" + annotations +
                "}]}]}");
}

std::string sources(const std::string& list) {
    return R"({"answer":"a","sources":)" + list + "}";
}

TEST(WebSearchClient, EachErrorHasItsSentence) {
    using E = WebSearchError;
    EXPECT_EQ((E{E::Service{Sentence("Limit")}}).popis().czech(), "Limit");
    EXPECT_EQ((E{E::MissingKey{}}).popis().czech(), "Chybí OpenAI API klíč.");
    EXPECT_EQ((E{E::EmptyQuery{}}).popis().czech(), "Chybí vyhledávací dotaz.");
    EXPECT_EQ((E{E::InvalidResponse{}}).popis().czech(), unreadable);
}

TEST(WebSearchClient, TheRequestIsExactlyTheOneThatIsTold) {
    const auto made = request(" Kdo\n");
    EXPECT_EQ(made.path, "/v1/responses");
    EXPECT_EQ(made.headers, (std::vector<std::pair<std::string, std::string>>{
                                {"Authorization", "Bearer key"}, {"Content-Type", "application/json"}}));
    EXPECT_EQ(made.body, R"({"model":"gpt-5","store":false,)"
                         R"("tools":[{"type":"web_search","search_context_size":"medium"}],)"
                         R"("input":"Answer in language code cs. Search the public web for: Kdo"})");
    EXPECT_EQ(WebSearchRequest::timeLimit, std::chrono::seconds(45));
}

TEST(WebSearchClient, AnEmptyQueryIsToldBeforeAMissingKey) {
    const auto failure = [](const std::string& query, const std::string& key) {
        return WebSearchClient::request(query, key, "cs").error().popis().czech();
    };
    EXPECT_EQ(failure(" \n", ""), "Chybí vyhledávací dotaz.");
    EXPECT_EQ(failure("x", " \n"), "Chybí OpenAI API klíč.");
}

TEST(WebSearchClient, AQueryIsCutTo600Characters) {
    std::string query;
    for (int i = 0; i < 700; ++i) query += "č";
    const std::string start = "Answer in language code cs. Search the public web for: ";
    EXPECT_EQ(input(query).size(), start.size() + std::string("č").size() * 600);
    EXPECT_EQ(input(std::string(600, 'x')), start + std::string(600, 'x'));
}

TEST(WebSearchClient, AStatusOfAFailureIsToldInTheServicesWordsIfItHasAny) {
    for (const int status : {199, 300, 401, 429, 500}) {
        EXPECT_EQ(told(R"({"error":{"message":"Limit"},"output":[]})", status), "Limit");
        const auto plain = "Webové hledání selhalo (HTTP " + std::to_string(status) + ").";
        for (const char* body :
             {"", "{", "[]", R"({"error":"Limit"})", R"({"error":{"message":7}})", R"({"error":{}})"})
            EXPECT_EQ(told(body, status), plain) << body;
    }
    EXPECT_EQ(told("{}", 0), unreadable) << "not HTTP";
}

TEST(WebSearchClient, AReplyWithoutAnOutputOrAnAnswerIsUnreadable) {
    for (const char* body :
         {"", "{", "[]", "{}", R"({"output":{}})", R"({"output":[]})", R"({"output":[7,{}]})",
          R"({"output":[{"content":[{"type":"output_text","text":" \n"}]}]})",
          R"({"output":[{"content":[{"type":"refusal","text":"no"}]}]})",
          R"({"output":[{"content":{"type":"output_text","text":"a"}}]})"})
        EXPECT_EQ(told(body), unreadable) << body;
}

TEST(WebSearchClient, TheTextsOfTheAnswerFollowEachOther) {
    EXPECT_EQ(told(R"({"output":[{"content":[{"type":"output_text","text":" a"},7,{"type":"x","text":"-"},)"
                   R"({"type":"output_text","text":"b"}]},{"content":[{"type":"output_text","text":"c "},)"
                   R"({"type":"output_text"}]}]})"),
              R"({"answer":"abc","sources":[]})");
}

TEST(WebSearchClient, AnAnswerIsCutTo16000Characters) {
    std::string text;
    for (int i = 0; i < 16'001; ++i) text += "č";
    const auto result = WebSearchClient::read(
        {200, R"({"output":[{"content":[{"type":"output_text","text":")" + text + R"("}]}]})"}, "");
    EXPECT_EQ(result.value().answer.size(), 16'000 * std::string("č").size());
}

TEST(WebSearchClient, SourcesOfActionsAndAnnotationsAreReadInTheirOrder) {
    EXPECT_EQ(
        told(R"({"output":[)"
             R"({"content":[{"type":"x","annotations":[{"url":"https://b.example/","title":"B"}]},)"
             R"({"type":"output_text","text":"a"}],"action":{"sources":[{"url":"https://a.example"}]}},)"
             R"({"action":{"sources":[{"url":"https://c.example","title":"C"}]}}]})"),
        sources(
            R"([{"title":"a.example","url":"https://a.example"},{"title":"B","url":"https://b.example/"},)"
            R"({"title":"C","url":"https://c.example"}])"));
}

TEST(WebSearchClient, ASourceIsAnAddressOfHttpsWithAHost) {
    for (const char* source : {R"({"url":"http://a.example"})", R"({"url":"https://"})",
                               R"({"url":"https:a"})", R"({"url":"a.example"})", R"({"url":7})",
                               R"({"title":"x"})", R"({"url":"https://a b"})", "7", R"("https://a.example")"})
        EXPECT_EQ(withAnnotations("[" + std::string(source) + "]"), sources("[]")) << source;
    EXPECT_EQ(withAnnotations(R"([{"url":"HTTPS://a.example"}])"),
              sources(R"([{"title":"a.example","url":"HTTPS://a.example"}])"));
}

TEST(WebSearchClient, ACitationIsReadFromItsInside) {
    EXPECT_EQ(
        withAnnotations(
            R"([{"url":"https://x.example","url_citation":{"url":"https://a.example","title":" A "}}])"),
        sources(R"([{"title":"A","url":"https://a.example"}])"));
    EXPECT_EQ(withAnnotations(R"([{"url":"https://x.example","url_citation":7}])"),
              sources(R"([{"title":"x.example","url":"https://x.example"}])"));
}

TEST(WebSearchClient, ATitleThatIsEmptyIsTheHost) {
    for (const char* title : {R"(,"title":" \n")", R"(,"title":7)", ""})
        EXPECT_EQ(withAnnotations(R"([{"url":"https://a.example/x")" + std::string(title) + "}]"),
                  sources(R"([{"title":"a.example","url":"https://a.example/x"}])"));
}

TEST(WebSearchClient, OfOneAddressTheFirstStaysAndOfAllTheFirstEight) {
    EXPECT_EQ(withAnnotations(R"([{"url":"https://a.example","title":"A"},{"url":"https://a.example"}])"),
              sources(R"([{"title":"A","url":"https://a.example"}])"));
    std::string many;
    for (int i = 0; i < 12; ++i)
        many += (i == 0 ? "" : ",") + (R"({"url":"https://)" + std::to_string(i % 11) + R"(.example"})");
    const auto read = decode<WebSearchResult>(withAnnotations("[" + many + "]")).value();
    EXPECT_EQ(read.sources.size(), 8U);
    EXPECT_EQ(read.sources.back().title, "7.example");
}

TEST(WebSearchClient, AnAddressMayHaveOtherLettersThanAsciiAndIsBounded) {
    EXPECT_EQ(withAnnotations(R"([{"url":"https://cs.example/wiki/Brno-město"}])"),
              sources(R"([{"title":"cs.example","url":"https://cs.example/wiki/Brno-město"}])"));
    EXPECT_EQ(withAnnotations(R"([{"url":"https://a.example/)" + std::string(2'048, 'x') + "\"}]"),
              sources("[]"));
    EXPECT_EQ(withAnnotations(R"([{"url":"https://a.example/","title":")" + std::string(400, 'x') + "\"}]"),
              sources(R"([{"title":")" + std::string(300, 'x') + R"(","url":"https://a.example/"}])"));
}

TEST(WebSearchClient, TheWordsOfTheServiceAreCutAndNeverCarryTheKey) {
    EXPECT_EQ(told(R"({"error":{"message":"Incorrect API key provided: klic."}})", 401),
              "Webové hledání selhalo (HTTP 401).");
    EXPECT_EQ(told(R"({"error":{"message":"a\u200b\n)" + std::string(10'000, 'x') + "\"}}", 500),
              "a " + std::string(498, 'x'));
}

} // namespace
} // namespace morvex
