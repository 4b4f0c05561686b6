#include "shared/base/SystemTrouble.h"
#include "shared/wire/Json.h"
#include "tests/servers/NodeServer.h"
#include "tests/servers/PrivateHousehold.h"
#include "tests/servers/TestNetwork.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

const std::string reached = "Připojeno · ";
const std::string failed = "Nepřipojeno: ";

/// The console, a relay and a phone that is paired, with real servers as custom apps of the computer.
class CustomAppsTest : public testing::Test, protected PrivateHousehold {
  protected:
    CustomAppsTest() { pair(*mac); }

    static std::unique_ptr<NodeServer> start(const std::string& kind, int port = 0) {
        return std::make_unique<NodeServer>(kind, testNetwork().authority, "apps.example", port);
    }

    /// Adds an app as a person does, and waits until the server has been asked.
    std::string add(const std::string& name, const NodeServer& server) {
        mac->type("aplikace-pridat");
        mac->type(name);
        mac->type("https://apps.example:" + std::to_string(server.port()));
        mac->type("token");
        mac->waitForNextLine("Přidáno: " + name);
        return outcome(name, "pojeno");
    }

    void type(const std::string& command, const std::string& answer) {
        mac->type(command);
        mac->waitForNextLine(answer);
    }

    /// What the console says of the app, as soon as that contains `text`.
    std::string outcome(const std::string& name, const std::string& text) {
        std::string line;
        for (const auto deadline = std::chrono::steady_clock::now() + 30s;
             std::chrono::steady_clock::now() < deadline; std::this_thread::sleep_for(20ms))
            if (line = shownOutcome(name); line.contains(text)) return line.substr(2);
        return "\"" + line + "\" instead of " + text;
    }

    /// The public name of the tool, which the phone has been told; empty if it has not.
    std::string tool(const std::string& app, const std::string& name) {
        for (const auto& [publicName, summary] : offered())
            if (summary.starts_with(app + ": ") && publicName.ends_with("." + name)) return publicName;
        return {};
    }

    /// The custom tools that the phone has been told, with their summaries.
    std::map<std::string, std::string> offered() {
        const auto listed = phone({"--json", "tools"});
        EXPECT_EQ(listed.code, 0) << listed.output;
        std::map<std::string, std::string> tools;
        const auto parsed = parseJson(listed.output).value_or(boost::json::array());
        for (const auto& tool : parsed.as_array()) {
            std::string name(tool.at("name").as_string());
            if (name.starts_with("mac.custom.")) tools[name] = tool.at("summary").as_string();
        }
        return tools;
    }

    /// The answer to a call of the phone as its user reads it.
    Ended call(const std::string& publicName, const std::string& arguments = "{}") {
        return phone({"call", publicName, arguments});
    }

    std::unique_ptr<Program> mac = startMac();

  private:
    /// The line below the app's in the list of the console.
    std::string shownOutcome(const std::string& name) {
        const auto before = mac->output().size();
        mac->type("aplikace");
        type("aplikace nic", "Správně: aplikace ");
        std::istringstream lines(mac->output().substr(before));
        std::string line;
        while (std::getline(lines, line) && !line.contains(": " + name + ", ")) {
        }
        std::getline(lines, line);
        return line.starts_with("  ") ? line : "";
    }
};

struct Lender {
    const char* kind;
    std::size_t tools;
    const char* tool;
    const char* arguments;
    const char* answer;
};

constexpr const char* greeting = R"({"text":"ahoj světe"})";
constexpr const char* numbers = R"({"a":2,"b":40})";

const std::vector<Lender> lenders{
    {"everything", 13, "get_sum", numbers, "app: everything\ntext: The sum of 2 and 40 is 42.\n"},
    {"json", 3, "sum", numbers, "sum: 42\n"},
    {"stream", 3, "echo", greeting, "app: stream\ntext: ahoj světe\n"},
    {"sessions", 3, "sum", numbers, "sum: 42\n"},
    {"sessions-pages", 5, "five", "{}", "app: sessions-pages\ntext: five\n"},
    {"second", 3, "echo", greeting, "app: second\ntext: ahoj světe\n"},
    {"strict", 3, "sum", numbers, "sum: 42\n"},
    {"strict-stream", 3, "echo", greeting, "app: strict-stream\ntext: ahoj světe\n"},
    {"strict-pages", 5, "five", "{}", "app: strict-pages\ntext: five\n"},
};

TEST_F(CustomAppsTest, EveryKindOfServerLendsItsToolsToThePhone) {
    std::vector<std::unique_ptr<NodeServer>> servers;
    std::size_t tools = 0;
    for (const auto& lender : lenders) {
        servers.push_back(start(lender.kind));
        const auto told = add(lender.kind, *servers.back());
        EXPECT_TRUE(told.starts_with(reached + std::to_string(lender.tools) + " nástrojů")) << told;
        tools += lender.tools;
    }
    EXPECT_EQ(offered().size(), tools);
    for (const auto& lender : lenders) {
        SCOPED_TRACE(lender.kind);
        const auto answer = call(tool(lender.kind, lender.tool), lender.arguments);
        EXPECT_EQ(answer.code, 0) << answer.output;
        EXPECT_TRUE(answer.output.contains(lender.answer)) << answer.output;
    }
}

TEST_F(CustomAppsTest, ThePhoneIsToldWhyAToolFailed) {
    const auto server = start("json");
    add("A", *server);
    const auto answer = call(tool("A", "fail"));
    EXPECT_EQ(answer.code, 1);
    EXPECT_TRUE(answer.output.contains("it was asked to fail")) << answer.output;
}

TEST_F(CustomAppsTest, AnAppAndAllOfThemAreSwitchedOffAndOn) {
    const auto first = start("json");
    const auto second = start("sessions");
    add("A", *first);
    add("B", *second);
    const auto echo = tool("A", "echo");

    type("aplikace vyp A", "Vypnuto: A");
    outcome("B", reached);
    EXPECT_EQ(tool("A", "echo"), "");
    EXPECT_NE(tool("B", "echo"), "");
    const auto refused = call(echo, greeting);
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains("tenhle Mac nemá.")) << refused.output;
    type("aplikace zap A", "Zapnuto: A");
    outcome("B", reached);
    EXPECT_EQ(tool("A", "echo"), echo);

    type("vypnout sluzby", "Vypnuto: sluzby");
    EXPECT_TRUE(offered().empty());
    EXPECT_EQ(call(echo, greeting).code, 1);
    type("zapnout sluzby", "Zapnuto: sluzby");
    outcome("B", reached);
    EXPECT_EQ(offered().size(), 6U);
    const auto answer = call(echo, greeting);
    EXPECT_EQ(answer.code, 0) << answer.output;
}

TEST_F(CustomAppsTest, AServerThatHasStoppedIsToldWithTheReasonUntilItAnswersAgain) {
    auto server = start("sessions");
    const auto port = server->port();
    add("A", *server);
    const auto echo = tool("A", "echo");
    server.reset();
    const auto reason = popis(SystemTrouble::refused).czech();

    const auto refused = call(echo, greeting);
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.output.contains(reason)) << refused.output;
    type("aplikace znovu", "Ptám se aplikací znovu.");
    EXPECT_EQ(outcome("A", failed), failed + reason);
    EXPECT_TRUE(offered().empty());

    server = start("sessions", port);
    type("aplikace znovu", "Ptám se aplikací znovu.");
    outcome("A", reached);
    EXPECT_EQ(call(echo, greeting).code, 0);
}

TEST_F(CustomAppsTest, ACallSurvivesThatTheServerHasForgottenTheSession) {
    for (const auto& [kind, name] : {std::pair("sessions", "sum"), {"everything", "get_sum"}}) {
        SCOPED_TRACE(kind);
        auto server = start(kind);
        const auto port = server->port();
        add(kind, *server);
        const auto sum = tool(kind, name);
        EXPECT_EQ(call(sum, numbers).code, 0);
        server.reset();
        server = start(kind, port);
        const auto answer = call(sum, numbers);
        EXPECT_EQ(answer.code, 0) << answer.output;
        EXPECT_TRUE(answer.output.contains("42")) << answer.output;
    }
}

TEST_F(CustomAppsTest, NewToolsWaitForTheirApprovalOnTheConsole) {
    auto server = start("sessions");
    const auto port = server->port();
    add("A", *server);
    type("aplikace hlidat A", "Změněné a nové nástroje čekají, až je uvidíš: A");
    outcome("A", reached + "3 nástrojů");

    server.reset();
    server = start("sessions-pages", port);
    type("aplikace znovu", "Ptám se aplikací znovu.");
    outcome("A", "5 čeká na schválení");
    EXPECT_TRUE(offered().empty());

    type("aplikace zmeny A", "Nový nástroj: one");
    type("aplikace videl A", "Poznamenáno: A");
    outcome("A", reached + "5 nástrojů");
    EXPECT_EQ(offered().size(), 5U);
    const auto answer = call(tool("A", "one"));
    EXPECT_TRUE(answer.output.contains("text: one\n")) << answer.output;
}

TEST_F(CustomAppsTest, AServerThatProvesAnotherNameIsToldAsThat) {
    const NodeServer server("json", testNetwork().authority, "servers.example");
    EXPECT_EQ(add("A", server), failed + popis(SystemTrouble::certificateOtherName).czech());
    EXPECT_TRUE(offered().empty());
}

} // namespace
} // namespace morvex
