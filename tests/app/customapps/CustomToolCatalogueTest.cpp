#include "app/customapps/CustomToolCatalogue.h"

#include "shared/wire/Json.h"
#include "tests/app/customapps/CustomAppsParts.h"
#include "tests/app/customapps/HeldHttp.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

StoredApp app(const std::string& id, const std::string& name = "App",
              const char* source = StoredApp::fromMac) {
    return {id, name, "https://" + id + ".example", true, source};
}

HttpReply result(const std::string& result) {
    return {200, R"({"result":)" + result + "}", {}};
}

HttpReply listOf(const std::vector<std::string>& names) {
    std::string tools;
    for (const auto& name : names) tools += (tools.empty() ? "" : ",") + (R"({"name":")" + name + "\"}");
    return result(R"({"tools":[)" + tools + "]}");
}

class CustomToolCatalogueTest : public testing::Test {
  protected:
    CustomToolCatalogueTest() {
        changed = catalogue.onOutcome([this] { ++told; });
    }

    ~CustomToolCatalogueTest() override { catalogue.clear(); }

    void refresh(std::vector<StoredApp> apps) {
        executor.start(catalogue.refresh(std::move(apps)));
        executor.runUntilIdle();
    }

    void answer(std::size_t number, HttpReply reply) {
        http.answer(number, std::move(reply));
        executor.runUntilIdle();
    }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& tool : catalogue.tools()) all.push_back(tool->descriptor.name);
        return all;
    }

    [[nodiscard]] std::string outcome(const std::string& id) const {
        const auto* found = catalogue.outcome(id);
        return found ? found->popis().czech() : "none";
    }

    /// The answer of a call whose server says this.
    std::string called(const std::string& name, const HttpReply& reply) {
        std::string answered;
        executor.start(noteCall(name, answered));
        executor.runUntilIdle();
        answer(http.requests.size() - 1, reply);
        return answered;
    }

    Task<void> noteCall(std::string name, std::string& answered) {
        answered = encode(co_await catalogue.callTool(std::move(name), {{"x", 1}}, {}));
    }

    ManualExecutor executor;
    CustomAppsParts parts{executor};
    HeldHttp http;
    bool isOn = true;
    Turns tokens;
    CustomToolCatalogue catalogue{
        {http, parts.keychain, tokens, executor, parts.clock, parts.seen, parts.scope.token()},
        [this] { return isOn; }};
    int told = 0;
    Connection changed;
};

using Names = std::vector<std::string>;

TEST_F(CustomToolCatalogueTest, AsksTheAppsOneAfterTheOther) {
    refresh({app("one"), app("two")});
    ASSERT_EQ(http.requests.size(), 1U);
    EXPECT_EQ(http.requests[0].url, "https://one.example/api/mcp");
    EXPECT_EQ(outcome("one"), "Zjišťuji nástroje…");
    EXPECT_EQ(outcome("two"), "Zjišťuji nástroje…");
    parts.clock.advance(250ms);
    answer(0, listOf({"a"}));
    EXPECT_EQ(names(), Names{"mac.custom.one.a"}) << "what is there is offered at once";
    EXPECT_EQ(outcome("one"), "Připojeno · 1 nástrojů · 250 ms");
    ASSERT_EQ(http.requests.size(), 2U);
    answer(1, listOf({"b", "c"}));
    EXPECT_EQ(names(), (Names{"mac.custom.one.a", "mac.custom.two.b", "mac.custom.two.c"}));
    EXPECT_EQ(told, 3);
}

TEST_F(CustomToolCatalogueTest, AnAppThatFailsIsLeftOutAndSaysWhy) {
    refresh({app("one"), app("two"), app("three")});
    http.failRequest(0);
    executor.runUntilIdle();
    answer(1, {503, "", {}});
    answer(2, listOf({"a"}));
    EXPECT_EQ(names(), Names{"mac.custom.three.a"});
    EXPECT_EQ(outcome("one"), "Nepřipojeno: síť neodpovídá");
    EXPECT_EQ(outcome("two"), "Nepřipojeno: Vlastní aplikace vrátila HTTP 503.");
    EXPECT_EQ(outcome("four"), "none");
}

TEST_F(CustomToolCatalogueTest, AnAddressThatIsNoneIsAFailureWithoutARequest) {
    auto broken = app("one");
    broken.endpoint = "nonsense";
    refresh({broken});
    EXPECT_TRUE(http.requests.empty());
    EXPECT_EQ(outcome("one"), "Nepřipojeno: Adresa vlastní aplikace musí být platné HTTPS.");
}

TEST_F(CustomToolCatalogueTest, TheTokenOfEachAppGoesToThatAppAlone) {
    executor.run(parts.keychain.save("secret", CustomToolCatalogue::tokenAccount("one")));
    refresh({app("one"), app("two")});
    answer(0, listOf({}));
    answer(1, listOf({}));
    EXPECT_EQ(http.requests[0].headers.at(0),
              std::pair(std::string("Authorization"), std::string("Bearer secret")));
    EXPECT_EQ(http.requests[1].headers.at(0).first, "Content-Type");
}

TEST_F(CustomToolCatalogueTest, TheIdsOfRequestsGoOnOverAllApps) {
    refresh({app("one"), app("two")});
    answer(0, listOf({}));
    answer(1, listOf({}));
    refresh({app("one")});
    EXPECT_EQ(parseJson(http.requests[2].body).value().at("id"), 3);
}

TEST_F(CustomToolCatalogueTest, AMinuteIsForAllAppsTogether) {
    refresh({app("one"), app("two"), app("three")});
    EXPECT_EQ(http.requests[0].timeLimit, 20s);
    parts.clock.advance(55s);
    answer(0, listOf({"a"}));
    EXPECT_EQ(http.requests[1].timeLimit, 5s);
    parts.clock.advance(6s);
    answer(1, listOf({"b"}));
    EXPECT_EQ(http.requests.size(), 2U);
    EXPECT_EQ(outcome("three"), "Nepřipojeno: Server se neozval včas.");
    EXPECT_EQ(names().size(), 2U);
}

TEST_F(CustomToolCatalogueTest, ANewerRefreshEndsTheOlderOne) {
    refresh({app("one"), app("two")});
    refresh({app("three")});
    ASSERT_EQ(http.requests.size(), 2U) << "the older one asks nobody more";
    EXPECT_TRUE(http.requests[0].stop.stop_requested());
    EXPECT_EQ(outcome("one"), "none");
    answer(1, listOf({"c"}));
    EXPECT_EQ(names(), Names{"mac.custom.three.c"});
}

TEST_F(CustomToolCatalogueTest, WhileItAsksTheCatalogueIsEmpty) {
    refresh({app("one")});
    answer(0, listOf({"a"}));
    refresh({app("one")});
    EXPECT_TRUE(names().empty());
    catalogue.clear();
    executor.runUntilIdle();
    EXPECT_EQ(outcome("one"), "none");
    EXPECT_TRUE(http.requests[1].stop.stop_requested());
}

TEST_F(CustomToolCatalogueTest, ANameThatAnotherAppHasGetsItsPosition) {
    refresh({app("same-app-1"), app("same-app-2")});
    answer(0, listOf({"a"}));
    answer(1, listOf({"b", "a"}));
    EXPECT_EQ(names(), (Names{"mac.custom.sameapp1.a", "mac.custom.sameapp2.b", "mac.custom.sameapp2.a"}));
    refresh({app("same-app-11"), app("same-app-12")});
    answer(2, listOf({"a"}));
    answer(3, listOf({"b", "a"}));
    EXPECT_EQ(names(), (Names{"mac.custom.sameapp1.a", "mac.custom.sameapp1.b", "mac.custom.sameapp1.a.2"}));
}

TEST_F(CustomToolCatalogueTest, ToolsInAllAreBoundedInNumberAndBytes) {
    std::vector<std::string> many;
    for (int i = 0; i < 300; ++i) many.push_back("t" + std::to_string(i));
    refresh({app("one"), app("two"), app("three")});
    for (std::size_t number = 0; number < 3; ++number) answer(number, listOf(many));
    EXPECT_EQ(names().size(), customToolLimits::mostInAll);
    EXPECT_EQ(outcome("one"), "Připojeno · 256 nástrojů · 0 ms · 44 nástrojů se nedá použít nebo se nevešlo");
    EXPECT_EQ(outcome("three"),
              "Připojeno · 0 nástrojů · 0 ms · 300 nástrojů se nedá použít nebo se nevešlo");

    std::string large;
    for (int i = 0; i < 100; ++i)
        large += (i == 0 ? "" : ",") + (R"({"name":"t)" + std::to_string(i) + R"(","inputSchema":{"a":")" +
                                        std::string(30'000, 'x') + "\"}}");
    refresh({app("one")});
    answer(3, result(R"({"tools":[)" + large + "]}"));
    EXPECT_EQ(names().size(), customToolLimits::longestOfApp / 30'050) << "others have room left";
}

TEST_F(CustomToolCatalogueTest, BehindAToolThatDoesNotFitNoneIsTaken) {
    std::string tools;
    for (int i = 0; i < 20; ++i)
        tools += R"({"name":"t)" + std::to_string(i) + R"(","inputSchema":{"a":")" +
                 std::string(30'000, 'x') + "\"}},";
    refresh({app("one")});
    answer(0, result(R"({"tools":[)" + tools + R"({"name":"small"}]})"));
    EXPECT_EQ(names().back(), "mac.custom.one.t16");
}

TEST_F(CustomToolCatalogueTest, OneAppHas20SecondsForAllItsRequests) {
    refresh({app("one"), app("two")});
    parts.clock.advance(15s);
    answer(0, {400, R"({"error":{"code":-32000,"message":"Server not initialized"}})", {}});
    EXPECT_EQ(http.requests.at(1).timeLimit, 5s);
    parts.clock.advance(6s);
    answer(1, result(R"({"protocolVersion":"2025-06-18"})"));
    EXPECT_EQ(outcome("one"), "Nepřipojeno: Server se neozval včas.");
    EXPECT_EQ(http.requests.at(2).url, "https://two.example/api/mcp");
    EXPECT_EQ(http.requests.at(2).timeLimit, 20s);
}

TEST_F(CustomToolCatalogueTest, AToolThatWaitsHoldsItsName) {
    refresh({app("same-app-11"), app("same-app-12")});
    answer(0, listOf({"a"}));
    answer(1, listOf({}));
    parts.seen.setHoldsChanges("same-app-11", true);
    refresh({app("same-app-11"), app("same-app-12")});
    answer(2, listOf({"b"}));
    answer(3, listOf({"b"}));
    EXPECT_EQ(names(), Names{"mac.custom.sameapp1.b.1"});
}

TEST_F(CustomToolCatalogueTest, AnApprovedToolIsNeverReplacedByAnotherOfItsName) {
    refresh({app("one")});
    answer(0, listOf({"a b", "a-b"}));
    const auto approved = catalogue.tools().at(1);
    EXPECT_EQ(approved->descriptor.name, "mac.custom.one.a_b.2");
    refresh({app("one")});
    answer(1, listOf({"a-b", "a b"}));
    auto outcome = executor.run(approved->run({approved->descriptor.name, {}, "r"}));
    EXPECT_EQ(encode(outcome->result),
              R"({"ok":false,"error":"Připojená aplikace tento nástroj nenabízí."})");
    EXPECT_EQ(http.requests.size(), 2U);
}

TEST_F(CustomToolCatalogueTest, ACallEndsWhenItsAppIsNotAskedAnyMore) {
    auto moved = app("two");
    moved.endpoint = "https://other.example";
    const std::string ended = R"({"ok":false,"error":"zastaveno"})";
    refresh({app("one"), app("two")});
    answer(0, listOf({"t"}));
    answer(1, listOf({"t"}));
    std::string ofOne;
    std::string ofTwo;
    executor.start(noteCall("mac.custom.one.t", ofOne));
    executor.start(noteCall("mac.custom.two.t", ofTwo));
    executor.runUntilIdle();
    refresh({app("one"), moved});
    EXPECT_EQ(ofTwo, ended) << "it is another server now";
    EXPECT_EQ(ofOne, "") << "a refresh ends no call";
    catalogue.clear();
    executor.runUntilIdle();
    EXPECT_EQ(ofOne, ended);
}

TEST_F(CustomToolCatalogueTest, ACallIsNotSentWhenItsAppGoesWhileTheTokenIsBeingChanged) {
    refresh({app("one")});
    answer(0, listOf({"t"}));
    std::string answered;
    {
        const auto turn = executor.run(tokens.take());
        executor.start(noteCall("mac.custom.one.t", answered));
        auto moved = app("one");
        moved.endpoint = "https://other.example";
        refresh({moved});
    }
    executor.runUntilIdle();
    EXPECT_EQ(answered, R"({"ok":false,"error":"Připojená aplikace tento nástroj nenabízí."})");
    ASSERT_EQ(http.requests.size(), 2U);
    EXPECT_EQ(http.requests[1].url, "https://other.example/api/mcp");
}

TEST_F(CustomToolCatalogueTest, AChangedToolWaitsWhereThePersonWantsIt) {
    refresh({app("one")});
    answer(0, listOf({"a"}));
    parts.seen.setHoldsChanges("one", true);
    refresh({app("one")});
    answer(1, listOf({"a", "b"}));
    EXPECT_EQ(names(), Names{"mac.custom.one.a"});
    EXPECT_EQ(outcome("one"), "Připojeno · 1 nástrojů · 1 čeká na schválení · 0 ms");
}

TEST_F(CustomToolCatalogueTest, ACallIsForwardedUnderTheRemoteName) {
    refresh({app("one", "Počasí")});
    answer(0, listOf({"weather-now"}));
    EXPECT_EQ(called("mac.custom.one.weather_now", result(R"({"content":[{"type":"text","text":"12 °C"}]})")),
              R"({"ok":true,"app":"Počasí","text":"12 °C"})");
    EXPECT_EQ(http.requests[1].body, R"({"jsonrpc":"2.0","id":2,"method":"tools/call",)"
                                     R"("params":{"name":"weather-now","arguments":{"x":1}}})");
}

TEST_F(CustomToolCatalogueTest, AResultBecomesAnAnswer) {
    refresh({app("one", "A")});
    answer(0, listOf({"t"}));

    struct Row {
        const char* result;
        const char* answer;
    };

    for (const auto& row : {
             Row{R"({})", R"({"ok":true,"app":"A","text":""})"},
             Row{R"({"content":"x"})", R"({"ok":true,"app":"A","text":""})"},
             Row{R"({"content":[7]})", R"({"ok":true,"app":"A","text":""})"},
             Row{R"({"content":[{"text":"1"},{"text":"2"}]})", R"({"ok":true,"app":"A","text":"1"})"},
             Row{R"({"isError":true,"content":[]})",
                 R"({"ok":false,"error":"Připojená aplikace vrátila chybu."})"},
             Row{R"({"isError":true,"content":[{"text":"Ne"}],"structuredContent":{}})",
                 R"({"ok":false,"error":"Ne"})"},
             Row{R"({"isError":"true","content":[{"text":"1"}]})", R"({"ok":true,"app":"A","text":"1"})"},
             Row{R"({"structuredContent":{"a":1},"content":[{"text":"1"}]})", R"({"a":1,"ok":true})"},
             Row{R"({"structuredContent":{"ok":false,"a":1}})", R"({"ok":false,"a":1})"},
             Row{R"({"structuredContent":{"ok":"yes"}})", R"({"ok":"yes"})"},
             Row{R"({"structuredContent":[]})", R"({"ok":true,"app":"A","text":""})"},
         })
        EXPECT_EQ(called("mac.custom.one.t", result(row.result)), row.answer) << row.result;
    EXPECT_EQ(called("mac.custom.one.t", {401, "", {}}),
              R"({"ok":false,"error":"Vlastní aplikace odmítla přístupový token."})");
}

TEST_F(CustomToolCatalogueTest, AnErrorOfAToolNeverCarriesTheToken) {
    executor.run(parts.keychain.save("secret", CustomToolCatalogue::tokenAccount("one")));
    refresh({app("one")});
    answer(0, listOf({"t"}));
    EXPECT_EQ(called("mac.custom.one.t", result(R"({"isError":true,"content":[{"text":"bad secret"}]})")),
              R"({"ok":false,"error":"Připojená aplikace vrátila chybu."})");
}

TEST_F(CustomToolCatalogueTest, AToolThatNobodyLendsIsRefused) {
    auto answer = executor.run(catalogue.callTool("mac.custom.one.t", {}, {}));
    EXPECT_EQ(encode(*answer), R"({"ok":false,"error":"Připojená aplikace tento nástroj nenabízí."})");
}

TEST_F(CustomToolCatalogueTest, TheReplyIsOkOnlyIfTheAnswerSaysSo) {
    refresh({app("one")});
    answer(0, listOf({"t"}));
    const auto tool = catalogue.tools().at(0);
    for (const auto& [said, ok] :
         {std::pair(R"({"ok":true})", true), {R"({"ok":false})", false}, {R"({"ok":1})", false}}) {
        std::optional<ToolOutcome> outcome;
        executor.start(
            [](std::shared_ptr<const Tool> running, std::optional<ToolOutcome>& end) -> Task<void> {
                end = co_await running->run({running->descriptor.name, {}, "r"});
            }(tool, outcome));
        executor.runUntilIdle();
        answer(http.requests.size() - 1, result(R"({"structuredContent":)" + std::string(said) + "}"));
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->ok, ok) << said;
        EXPECT_EQ(encode(outcome->result), said);
    }
}

TEST_F(CustomToolCatalogueTest, ACallThatTheAbandonedPhoneMadeEnds) {
    refresh({app("one")});
    answer(0, listOf({"t"}));
    std::stop_source abandoned;
    auto call = catalogue.callTool("mac.custom.one.t", {}, abandoned.get_token());
    std::string answered;
    executor.start([](Task<boost::json::object> task, std::string& end) -> Task<void> {
        end = encode(co_await std::move(task));
    }(std::move(call), answered));
    executor.runUntilIdle();
    EXPECT_EQ(answered, "");
    abandoned.request_stop();
    executor.runUntilIdle();
    EXPECT_EQ(answered, R"({"ok":false,"error":"zastaveno"})");
}

TEST_F(CustomToolCatalogueTest, TheStatusNamesToolsOfThisComputersAppsOnly) {
    refresh({app("one"), app("two", "Phone", StoredApp::fromIPhone)});
    answer(0, listOf({"a"}));
    answer(1, listOf({"b"}));
    EXPECT_TRUE(catalogue.tools().at(0)->isInStatus);
    EXPECT_FALSE(catalogue.tools().at(1)->isInStatus);
    EXPECT_TRUE(catalogue.tools().at(1)->isOffered());
    isOn = false;
    EXPECT_FALSE(catalogue.tools().at(1)->isOffered());
}

} // namespace
} // namespace morvex
