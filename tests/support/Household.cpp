#include "tests/support/Household.h"

#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <csignal>

namespace morvex {

Household::Household() {
    startRelay();
}

void Household::startRelay() {
    auto listen = relayAddress.empty() ? "127.0.0.1:0" : relayAddress.substr(relayAddress.find("//") + 2);
    relay = std::make_unique<Program>(
        "morvex-relay",
        std::vector<std::string>{"--listen", listen, "--db", (temporary.path() / "relay.db").string()},
        environment("relay"));
    auto line = relay->waitForLine("listening on ");
    relayAddress = line.substr(line.find("http://"));
}

void Household::restartRelay() {
    relay->signal(SIGTERM);
    EXPECT_EQ(relay->wait(), 0);
    startRelay();
}

std::unique_ptr<Program> Household::startMac(const std::string& home, Program::Input input) {
    auto mac = std::make_unique<Program>("morvex", std::vector<std::string>{}, environment(home), input);
    mac->waitForLine("běží");
    mac->type("relay " + relayAddress);
    return mac;
}

Ended Household::phone(std::vector<std::string> arguments, const std::string& input) {
    arguments.insert(arguments.begin(), {"--data", (temporary.path() / "phone").string()});
    return runProgram("morvex-phone", arguments, environment("phone"), input);
}

Ended Household::call(const std::string& tool, const boost::json::object& arguments,
                      std::vector<std::string> options) {
    options.insert(options.end(), {"--json", "call", tool, boost::json::serialize(arguments)});
    return phone(std::move(options));
}

boost::json::object Household::answerOf(const std::string& tool, const boost::json::object& arguments) {
    const auto ended = call(tool, arguments);
    EXPECT_EQ(ended.code, 0) << ended.output;
    const auto parsed = parseJson(ended.output);
    return parsed && parsed->is_object() ? parsed->as_object() : boost::json::object();
}

std::string Household::pair(Program& mac) {
    mac.type("parovat");
    auto code = mac.waitForNextLine("{\"agreementKey\"");
    auto paired = phone({"--yes", "pair", code});
    EXPECT_EQ(paired.code, 0) << paired.output;
    auto shown = mac.waitForNextLine("Číslo k porovnání: ");
    auto number = shown.substr(shown.find(": ") + 2);
    EXPECT_NE(paired.output.find(number), std::string::npos) << paired.output;
    mac.type("souhlasi");
    mac.waitForNextLine("Párování: nic neprobíhá");
    return number;
}

std::string Household::allow(Program& mac, const std::string& name) {
    auto folder = temporary.path() / "mac" / name;
    std::filesystem::create_directories(folder);
    mac.type("povolit " + folder.string());
    mac.waitForNextLine("Složka: " + folder.string());
    return folder.string();
}

std::filesystem::path Household::peerFile() const {
    return temporary.path() / "mac/.local/share/Morvex/vault/zz.bramwicks.tolvy/parovani.protejsek";
}

Program::Environment Household::environment(const std::string& home) {
    auto folder = temporary.path() / home;
    std::filesystem::create_directories(folder);
    auto variables = shared;
    variables.insert({{"HOME", folder.string()}, {"PATH", "/usr/bin:/bin"}});
    for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"})
        if (const char* value = std::getenv(name)) variables.insert({name, value});
    return variables;
}

} // namespace morvex
