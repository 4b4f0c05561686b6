#include "shared-apple/RelayParovani.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedHttp.h"
#include "shared/trust/Crypto.h"
#include "shared/wire/DecodeError.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"
#include "tests/support/Devices.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using RelayChyba = RelayParovani::RelayChyba;

class RelayParovaniTest : public testing::Test {
  protected:
    Result<RelayParovani::Zalozeni> zalozit(DeviceRole role = DeviceRole::mac) {
        return executor.run(parovani.zalozit(address, identita, role)).value();
    }

    Result<PairID> pripojit(DeviceRole role = DeviceRole::phone) {
        return executor.run(parovani.pripojit(address, "TOKEN", identita, role)).value();
    }

    Result<void> odvolat() {
        return executor.run(parovani.odvolat(address, {"PAIR"}, {"TARGET"}, identita)).value();
    }

    void reply(int status, std::string body = {}) { http.replies.push_back({status, std::move(body)}); }

    template <class T> static void expectRefusal(const Result<T>& result, const RelayChyba& expected) {
        ASSERT_FALSE(result);
        auto* chyba = result.error().template as<RelayChyba>();
        ASSERT_TRUE(chyba) << result.error().popis().czech();
        EXPECT_EQ(*chyba, expected);
        EXPECT_EQ(result.error().popis().czech(), expected.zprava);
    }

    ManualExecutor executor;
    ManualClock clock;
    ScriptedHttp http;
    RelayParovani parovani{http, clock};
    RelayAddress address = *RelayAddress::parse("https://relay.example/base");
    std::shared_ptr<const DeviceIdentity> identita = test::newIdentity();
};

const std::string founded = R"({"pairID":"P-1","pairingToken":"T-1","expiresAt":"2027-01-15T08:10:00Z"})";

TEST_F(RelayParovaniTest, EveryRequestIsAPostOfJsonWithinFifteenSeconds) {
    reply(200, founded);
    reply(200, R"({"pairID":"P-1"})");
    reply(204);
    ASSERT_TRUE(zalozit());
    ASSERT_TRUE(pripojit());
    ASSERT_TRUE(odvolat());
    ASSERT_EQ(http.requests.size(), 3U);
    EXPECT_EQ(http.requests[0].url, "https://relay.example/base/v1/pair/create");
    EXPECT_EQ(http.requests[1].url, "https://relay.example/base/v1/pair/join");
    EXPECT_EQ(http.requests[2].url, "https://relay.example/base/v1/device/revoke");
    for (const auto& request : http.requests) {
        EXPECT_EQ(request.method, "POST");
        EXPECT_EQ(request.headers,
                  (std::vector<std::pair<std::string, std::string>>{{"Content-Type", "application/json"}}));
        EXPECT_EQ(request.timeLimit, 15s);
    }
}

TEST_F(RelayParovaniTest, FoundsAPairInTheGivenRole) {
    for (auto role : {DeviceRole::mac, DeviceRole::phone}) {
        reply(200, founded);
        auto zalozeni = zalozit(role);
        ASSERT_TRUE(zalozeni);
        EXPECT_EQ(zalozeni->pairID, PairID{"P-1"});
        EXPECT_EQ(zalozeni->pairingToken, "T-1");
        EXPECT_EQ(zalozeni->platiDo, dateFromSeconds(1'800'000'600));
        EXPECT_EQ(decode<ZalozitPozadavek>(http.requests.back().body).value(),
                  (ZalozitPozadavek{identita->deviceID(), identita->signingKey(), role}));
    }
}

TEST_F(RelayParovaniTest, JoinsAPairWithItsToken) {
    for (auto role : {DeviceRole::mac, DeviceRole::phone}) {
        reply(201, R"({"pairID":"P-2"})");
        EXPECT_EQ(pripojit(role).value(), PairID{"P-2"});
        EXPECT_EQ(decode<PripojitPozadavek>(http.requests.back().body).value(),
                  (PripojitPozadavek{"TOKEN", identita->deviceID(), identita->signingKey(), role}));
    }
}

TEST_F(RelayParovaniTest, TheRelayCanCheckARevocationFromItsFieldsAlone) {
    clock.setWallClock(dateFromSeconds(1'800'000'000) + 999'999us);
    reply(200, "whatever it is, nobody reads it");
    ASSERT_TRUE(odvolat());
    auto request = decode<OdvolatPozadavek>(http.requests.back().body).value();
    EXPECT_EQ(request.pairID, PairID{"PAIR"});
    EXPECT_EQ(request.target, DeviceID{"TARGET"});
    EXPECT_EQ(request.by, identita->deviceID());
    EXPECT_EQ(request.signedAt, dateFromSeconds(1'800'000'000));
    auto text = "revoke|PAIR|TARGET|" + identita->deviceID().rawValue + "|1800000000";
    EXPECT_TRUE(ed25519Verify(request.signature, asBytes(text), identita->signingKey().raw));
}

TEST_F(RelayParovaniTest, TheTimeOfARevocationIsTruncatedTowardZeroBefore1970Too) {
    clock.setWallClock(dateFromSeconds(-5) - 700ms);
    reply(200);
    ASSERT_TRUE(odvolat());
    auto request = decode<OdvolatPozadavek>(http.requests.back().body).value();
    EXPECT_EQ(request.signedAt, dateFromSeconds(-5));
    auto text = "revoke|PAIR|TARGET|" + identita->deviceID().rawValue + "|-5";
    EXPECT_TRUE(ed25519Verify(request.signature, asBytes(text), identita->signingKey().raw));
}

TEST_F(RelayParovaniTest, ARefusalIsToldInTheRelaysWordsOrByItsStatus) {
    struct Row {
        int status;
        std::string body;
        std::string zprava;
    };

    const std::vector<Row> rows{
        {404, R"({"reason":"pair not found"})", "pair not found"},
        {400, R"({"reason":"Token už neplatí.","code":7})", "Token už neplatí."},
        {403, R"({"reason":""})", ""},
        {500, "<html><body>Internal Server Error</body></html>", "Relay odmítl požadavek (500)."},
        {400, "{}", "Relay odmítl požadavek (400)."},
        {400, R"({"reason":null})", "Relay odmítl požadavek (400)."},
        {400, R"({"reason":7})", "Relay odmítl požadavek (400)."},
        {502, "", "Relay odmítl požadavek (502)."},
        {101, "", "Relay odmítl požadavek (101)."},
        {199, R"({"pairID":"P-1"})", "Relay odmítl požadavek (199)."},
        {301, "", "Relay odmítl požadavek (301)."},
        {300, founded, "Relay odmítl požadavek (300)."},
    };
    for (const auto& row : rows) {
        for (int i = 0; i < 3; ++i) reply(row.status, row.body);
        expectRefusal(zalozit(), {row.status, Sentence(row.zprava)});
        expectRefusal(pripojit(), {row.status, Sentence(row.zprava)});
        expectRefusal(odvolat(), {row.status, Sentence(row.zprava)});
    }
}

TEST_F(RelayParovaniTest, AReplyThatIsNoHttpIsToldAsSilence) {
    for (int i = 0; i < 3; ++i) reply(0, R"({"reason":"not read"})");
    expectRefusal(zalozit(), {0, Sentence("Relay neodpověděl.")});
    expectRefusal(pripojit(), {0, Sentence("Relay neodpověděl.")});
    expectRefusal(odvolat(), {0, Sentence("Relay neodpověděl.")});
}

TEST_F(RelayParovaniTest, AnyStatusFrom200To299IsSuccess) {
    for (int status : {200, 201, 202, 204, 299}) {
        reply(status, founded);
        EXPECT_TRUE(zalozit()) << status;
        reply(status);
        EXPECT_TRUE(odvolat()) << status;
    }
}

TEST_F(RelayParovaniTest, ASuccessWhoseBodyIsNoReplyIsADecodingFailure) {
    const std::vector<std::pair<int, std::string>> rows{
        {204, ""},
        {200, "{}"},
        {200, "<html></html>"},
        {200, R"({"pairID":7,"pairingToken":"T-1","expiresAt":"2027-01-15T08:10:00Z"})"},
        {200, R"({"pairID":"P-1","pairingToken":"T-1","expiresAt":"2027-01-15T08:10:00.5Z"})"},
    };
    for (const auto& [status, body] : rows) {
        reply(status, body);
        auto zalozeni = zalozit();
        ASSERT_FALSE(zalozeni) << body;
        EXPECT_TRUE(zalozeni.error().as<DecodeError>()) << body;
    }
    reply(204);
    auto pair = pripojit();
    ASSERT_FALSE(pair);
    EXPECT_TRUE(pair.error().as<DecodeError>());
}

TEST_F(RelayParovaniTest, WhatFitsNoCodeIsNoPair) {
    const auto foundedAs = [](const std::string& pair, const std::string& token) {
        return R"({"pairID":")" + pair + R"(","pairingToken":")" + token +
               R"(","expiresAt":"2027-01-15T08:10:00Z"})";
    };
    const std::string longest(1000, 'x');
    const auto quote = longest.substr(0, 40) + "…";
    reply(200, foundedAs(longest, longest));
    EXPECT_TRUE(zalozit());
    reply(200, foundedAs("", "T"));
    EXPECT_EQ(zalozit().error().popis().czech(), "Pole „pairID“ má nečitelnou hodnotu „“.");
    reply(200, foundedAs(longest + "x", "T"));
    EXPECT_EQ(zalozit().error().popis().czech(), "Pole „pairID“ má nečitelnou hodnotu „" + quote + "“.");
    reply(200, foundedAs("P", ""));
    EXPECT_EQ(zalozit().error().popis().czech(), "Pole „pairingToken“ má nečitelnou hodnotu „“.");
    reply(200, R"({"pairID":")" + longest + R"(x"})");
    EXPECT_EQ(pripojit().error().popis().czech(), "Pole „pairID“ má nečitelnou hodnotu „" + quote + "“.");
}

TEST_F(RelayParovaniTest, ANetworkFailurePassesOnAndNothingIsTriedAgain) {
    auto zalozeni = zalozit();
    ASSERT_FALSE(zalozeni);
    EXPECT_TRUE(zalozeni.error().as<NetworkError>());
    EXPECT_EQ(zalozeni.error().popis().czech(), "síť neodpovídá");
    EXPECT_EQ(pripojit().error().popis().czech(), "síť neodpovídá");
    EXPECT_EQ(odvolat().error().popis().czech(), "síť neodpovídá");
    EXPECT_EQ(http.requests.size(), 3U);
}

TEST_F(RelayParovaniTest, OfALongReasonOnlyWhatAPersonReadsIsKept) {
    reply(429, R"({"reason":")" + std::string(501, 'x') + "\"}");
    expectRefusal(zalozit(), {429, Sentence(std::string(500, 'x'))});
}

} // namespace
} // namespace morvex
