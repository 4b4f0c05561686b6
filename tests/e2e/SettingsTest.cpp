#include "shared/base/Base64.h"
#include "shared/wire/Json.h"
#include "tests/e2e/EndToEnd.h"

#include <boost/json.hpp>

#include <csignal>
#include <fstream>
#include <sstream>

namespace morvex {
namespace {

/// The settings of the phone, as the companion stores them.
class SettingsTest : public EndToEnd {
  protected:
    [[nodiscard]] boost::json::object defaults() const {
        auto parsed = parseJson(content(temporary.path() / "mac/.config/Morvex/defaults.json"));
        return parsed ? parsed->as_object() : boost::json::object();
    }

    /// The custom apps among the settings, as text.
    [[nodiscard]] std::string metadata() const {
        auto kept = defaults();
        auto* data = kept.if_contains("custom.apps.metadata");
        if (!data) return "";
        auto bytes = base64Decode(std::string(data->as_object().at("$data").as_string()));
        return std::string(asText(bytes.value()));
    }

    [[nodiscard]] std::filesystem::path secretPath(const std::string& account) const {
        return temporary.path() / "mac/.local/share/Morvex/vault/zz.bramwick.Morvex.mac" / account;
    }

    [[nodiscard]] std::string secret(const std::string& account) const {
        return content(secretPath(account));
    }

    /// The id that the phone gave its only custom app.
    std::string appID() {
        auto listed = phone({"apps", "list", "--json"});
        return std::string(parseJson(listed.output).value().at(0).at("id").as_string());
    }

    /// Messages are handled in order, so an answer means that the earlier ones were handled.
    void awaitHandling() { EXPECT_EQ(phone({"call", "mac.status"}).code, 0); }

    static std::string content(const std::filesystem::path& path) {
        std::stringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
};

TEST_F(SettingsTest, KeyPreferencesAndAppsOfThePhoneAreKeptByTheirRulesAndSurviveARestart) {
    auto mac = startMac();
    pair(*mac);

    auto key = phone({"key"}, " sk-velmi-tajny ");
    EXPECT_EQ(key.code, 0) << key.output;
    EXPECT_EQ(secret("openai.apiKey"), "sk-velmi-tajny");

    EXPECT_EQ(phone({"preferences", "language", "de"}).code, 0);
    EXPECT_EQ(phone({"preferences", "voice", "marin"}).code, 0);
    EXPECT_EQ(phone({"preferences", "place", "Domov", "Krátká 2, Praha"}).code, 0);
    EXPECT_EQ(phone({"preferences", "voice", "orion"}).code, 0);
    awaitHandling();
    auto kept = defaults();
    EXPECT_EQ(kept["app.language"], "de");
    EXPECT_EQ(kept["app.language.phone"], "de");
    EXPECT_EQ(kept["app.language.receivedFromPhone"], true);
    EXPECT_EQ(kept["voice.name"], "marin") << "a voice that is not supported is ignored";
    EXPECT_EQ(secret("companion.places"), R"([{"name":"Domov","address":"Krátká 2, Praha"}])");

    auto added = phone({"apps", "add", "Počasí", "https://example.com/"}, "velmi-tajny-token");
    EXPECT_EQ(added.code, 0) << added.output;
    auto tokenAccount = "custom.app." + appID() + ".token";
    EXPECT_EQ(secret(tokenAccount), "velmi-tajny-token");
    auto found = metadata();
    EXPECT_EQ(found, R"([{"id":")" + appID() +
                         R"(","name":"Počasí","endpoint":"https://example.com/","enabled":true,)"
                         R"("source":"iphone"}])");
    EXPECT_EQ(phone({"apps", "add", "Nešifrovaná", "http://example.com"}, "t").code, 2);
    EXPECT_EQ(metadata(), found) << "an address without https is not even sent";

    mac->signal(SIGTERM);
    EXPECT_EQ(mac->wait(), 0) << mac->output();
    EXPECT_EQ(mac->output().find("velmi-tajny"), std::string::npos);
    mac = startMac();
    EXPECT_EQ(phone({"apps", "add", "Počasí", "https://example.com/mcp"}, " ").code, 0);
    EXPECT_NE(metadata().find("https://example.com/mcp"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(secretPath(tokenAccount))) << "an empty token deletes";
    EXPECT_EQ(secret("openai.apiKey"), "sk-velmi-tajny");
    EXPECT_EQ(phone({"key"}, "-").code, 0);
    EXPECT_FALSE(std::filesystem::exists(secretPath("openai.apiKey")));
    EXPECT_EQ(defaults()["app.language"], "de");
}

} // namespace
} // namespace morvex
