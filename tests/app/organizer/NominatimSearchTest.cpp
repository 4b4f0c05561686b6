#include "app/organizer/NominatimSearch.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedHttp.h"

#include <gtest/gtest.h>

#include <chrono>

namespace morvex {
namespace {

class NominatimSearchTest : public testing::Test {
  protected:
    Result<std::optional<FoundPlace>> find(const std::string& text, std::stop_token stop = {}) {
        return *executor.run(search.find(text, std::move(stop)));
    }

    /// What a reply with this body is read as: "lat lon name", "none" or the words of its failure.
    static std::string read(const std::string& body) {
        const auto place = NominatimSearch::read(body);
        if (!place) return "failure";
        if (!*place) return "none";
        return std::to_string((*place)->latitude) + " " + std::to_string((*place)->longitude) + " " +
               (*place)->name;
    }

    ManualExecutor executor;
    ScriptedHttp http;
    NominatimSearch search{http, "https://places.example", "1.2.3"};
    const std::string brno = R"([{"place_id":1,"lat":"49.1922","lon":"-16.6113","name":"Brno","more":{}}])";
};

TEST_F(NominatimSearchTest, AsksOnceForOnePlace) {
    http.replies.push_back({200, brno, {}});
    const auto found = find("Lípa & syn, 1/2?");
    ASSERT_TRUE(found && *found);
    EXPECT_EQ(**found, (FoundPlace{"Brno", 49.1922, -16.6113}));
    ASSERT_EQ(http.requests.size(), 1U);
    const auto& request = http.requests.front();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url,
              "https://places.example/search?q=L%C3%ADpa%20%26%20syn%2C%201%2F2%3F&format=jsonv2&limit=1");
    using Headers = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(request.headers, (Headers{{"User-Agent", "Morvex/1.2.3"}}));
    EXPECT_EQ(request.body, "");
    EXPECT_EQ(request.timeLimit, std::chrono::seconds(10));
    EXPECT_EQ(request.replyLimit, std::size_t{64} * 1024);
}

TEST_F(NominatimSearchTest, ReadsTheFirstPlaceOfTheReply) {
    struct Row {
        const char* body;
        const char* read;
    };

    for (const auto& row : {
             Row{"[]", "none"},
             Row{R"([{"lat":"1","lon":"2"}])", "1.000000 2.000000 "},
             Row{R"([{"lat":"1","lon":"2","name":null}])", "1.000000 2.000000 "},
             Row{R"([{"lat":"-90","lon":"180","name":"a"},5])", "-90.000000 180.000000 a"},
             Row{R"([{"lat":"90","lon":"-180.000","name":"a"}])", "90.000000 -180.000000 a"},
             Row{R"([{"lat":"90.0001","lon":"0"}])", "failure"},
             Row{R"([{"lat":"0","lon":"-180.1"}])", "failure"},
             Row{R"([{"lat":"nan","lon":"0"}])", "failure"},
             Row{R"([{"lat":"0","lon":"inf"}])", "failure"},
             Row{R"([{"lat":"1e400","lon":"0"}])", "failure"},
             Row{R"([{"lat":"1e1","lon":"0"}])", "failure"},
             Row{R"([{"lat":"0x1","lon":"0"}])", "failure"},
             Row{R"([{"lat":" 1","lon":"0"}])", "failure"},
             Row{R"([{"lat":"+1","lon":"0"}])", "failure"},
             Row{R"([{"lat":"1,5","lon":"0"}])", "failure"},
             Row{R"([{"lat":"","lon":"0"}])", "failure"},
             Row{R"([{"lat":1,"lon":2}])", "failure"},
             Row{R"([{"lat":"1"}])", "failure"},
             Row{R"([5])", "failure"},
             Row{R"({"error":"x"})", "failure"},
             Row{"null", "failure"},
             Row{"", "failure"},
             Row{"<html>", "failure"},
             Row{R"([{"lat":"1","lon":"2"}] )", "1.000000 2.000000 "},
             Row{R"([{"lat":"1","lon":"2"}]])", "failure"},
         })
        EXPECT_EQ(read(row.body), row.read) << row.body;
}

TEST_F(NominatimSearchTest, EveryOtherAnswerIsAFailure) {
    for (const int status : {0, 201, 301, 403, 404, 429, 500}) {
        http.replies.push_back({status, brno, {}});
        const auto found = find("x");
        ASSERT_FALSE(found.has_value()) << status;
        EXPECT_EQ(found.error().popis(), "Hledání místa selhalo.");
    }
    EXPECT_FALSE(find("x").has_value()) << "the network fails";
}

TEST_F(NominatimSearchTest, AStopEndsTheSearch) {
    http.replies.push_back({200, brno, {}});
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_FALSE(find("x", stopped.get_token()).has_value());
}

TEST_F(NominatimSearchTest, ATextThatNoPlaceHasIsNotSent) {
    http.replies.push_back({200, brno, {}});
    EXPECT_EQ(find(std::string(1025, 'x')).value(), std::nullopt);
    EXPECT_TRUE(http.requests.empty());
    EXPECT_TRUE(find(std::string(1024, 'x')).value());
    EXPECT_EQ(http.requests.size(), 1U);
}

} // namespace
} // namespace morvex
