#include "relay/TlsSettings.h"

#include "tests/relay/TlsRelay.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace morvex;

namespace {

using KeyKind = TestAuthority::KeyKind;

constexpr auto ec = KeyKind::ellipticCurve;
constexpr auto rsa = KeyKind::rsa;

/// What a client offers alone, with everything else the library has switched on.
struct Offer {
    KeyKind certificate;
    int version;
    const char* cipher;
    bool isTaken;
};

void offerOnly(SSL_CTX* context, const Offer& offer) {
    SSL_CTX_set_min_proto_version(context, offer.version);
    SSL_CTX_set_max_proto_version(context, offer.version);
    const bool isNew = offer.version == TLS1_3_VERSION;
    const auto set =
        isNew ? SSL_CTX_set_ciphersuites(context, offer.cipher)
              : SSL_CTX_set_cipher_list(context, (offer.cipher + std::string(":@SECLEVEL=0")).c_str());
    ASSERT_EQ(set, 1) << offer.cipher;
}

struct RelayTls : testing::Test {
    TlsRelay relay;
    TlsRelay rsaRelay{RunningRelay::quickLimits(), rsa};

    std::uint16_t portOf(KeyKind kind) { return kind == rsa ? rsaRelay.port() : relay.port(); }
};

} // namespace

TEST_F(RelayTls, TakesForwardSecrecyWithAuthenticatedEncryptionAlone) {
    const std::vector<Offer> offers{
        {ec, TLS1_3_VERSION, "TLS_AES_128_GCM_SHA256", true},
        {ec, TLS1_3_VERSION, "TLS_AES_256_GCM_SHA384", true},
        {ec, TLS1_3_VERSION, "TLS_CHACHA20_POLY1305_SHA256", true},
        {rsa, TLS1_3_VERSION, "TLS_AES_128_GCM_SHA256", true},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-AES128-GCM-SHA256", true},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-AES256-GCM-SHA384", true},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-CHACHA20-POLY1305", true},
        {rsa, TLS1_2_VERSION, "ECDHE-RSA-AES128-GCM-SHA256", true},
        {rsa, TLS1_2_VERSION, "ECDHE-RSA-AES256-GCM-SHA384", true},
        {rsa, TLS1_2_VERSION, "ECDHE-RSA-CHACHA20-POLY1305", true},
        {ec, TLS1_3_VERSION, "TLS_AES_128_CCM_SHA256", false},
        {ec, TLS1_3_VERSION, "TLS_AES_128_CCM_8_SHA256", false},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-AES128-SHA", false},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-AES256-SHA", false},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-AES128-SHA256", false},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-AES256-SHA384", false},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-AES128-CCM", false},
        {ec, TLS1_2_VERSION, "ECDHE-ECDSA-CAMELLIA128-SHA256", false},
        {rsa, TLS1_2_VERSION, "ECDHE-RSA-AES128-SHA", false},
        {rsa, TLS1_2_VERSION, "ECDHE-RSA-AES256-SHA", false},
        {rsa, TLS1_2_VERSION, "ECDHE-RSA-AES128-SHA256", false},
        {rsa, TLS1_2_VERSION, "ECDHE-RSA-AES256-SHA384", false},
        {rsa, TLS1_2_VERSION, "AES128-SHA", false},
        {rsa, TLS1_2_VERSION, "AES256-SHA256", false},
        {rsa, TLS1_2_VERSION, "AES128-GCM-SHA256", false},
        {rsa, TLS1_2_VERSION, "AES256-GCM-SHA384", false},
        {rsa, TLS1_2_VERSION, "DHE-RSA-AES128-GCM-SHA256", false},
        {rsa, TLS1_2_VERSION, "AECDH-AES128-SHA", false},
        {rsa, TLS1_1_VERSION, "ALL", false},
        {ec, TLS1_1_VERSION, "ALL", false},
        {rsa, TLS1_VERSION, "ALL", false},
    };
    for (const auto& offer : offers) {
        TlsClient client(portOf(offer.certificate), [&](SSL_CTX* context) { offerOnly(context, offer); });
        EXPECT_EQ(client.handshake(), offer.isTaken) << offer.version << " " << offer.cipher;
    }
    tell("offers of TLS versions and ciphers", offers.size(), "ten taken, the others refused");
}

TEST_F(RelayTls, AgreesOnKeysInThreeGroups) {
    struct Row {
        const char* group;
        bool isTaken;
    };

    for (const auto& row : {Row{"X25519", true}, Row{"P-256", true}, Row{"P-384", true}, Row{"P-521", false},
                            Row{"X448", false}, Row{"ffdhe2048", false}}) {
        TlsClient client(relay.port(), [&](SSL_CTX* context) {
            ASSERT_EQ(SSL_CTX_set1_groups_list(context, row.group), 1);
        });
        EXPECT_EQ(client.handshake(), row.isTaken) << row.group;
    }
}

TEST_F(RelayTls, ResumesNoSession) {
    for (const int version : {TLS1_2_VERSION, TLS1_3_VERSION}) {
        const auto settings = [version](SSL_CTX* context) {
            SSL_CTX_set_max_proto_version(context, version);
        };
        TlsClient first(relay.port(), settings);
        ASSERT_TRUE(first.handshake());
        // Tickets of version 1.3 come behind the handshake.
        first.write("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
        first.read();
        auto* session = SSL_get1_session(first.ssl());
        EXPECT_EQ(SSL_SESSION_has_ticket(session), 0);
        TlsClient second(relay.port(), settings);
        SSL_set_session(second.ssl(), session);
        EXPECT_TRUE(second.handshake());
        EXPECT_EQ(SSL_session_reused(second.ssl()), 0);
        SSL_SESSION_free(session);
    }
}

TEST_F(RelayTls, NegotiatesOnce) {
    TlsClient client(relay.port(),
                     [](SSL_CTX* context) { SSL_CTX_set_max_proto_version(context, TLS1_2_VERSION); });
    ASSERT_TRUE(client.handshake());
    ASSERT_EQ(SSL_renegotiate(client.ssl()), 1);
    EXPECT_FALSE(client.handshake() && client.write("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n") &&
                 !client.read().empty());
}

TEST(TlsSettings, RefusesFilesItCannotUse) {
    const auto loaded = loadTls({"/missing.pem", "/missing.pem"});
    ASSERT_FALSE(loaded);
    EXPECT_THAT(loaded.error().popis().czech(),
                testing::StartsWith("cannot use the certificate /missing.pem: "));
}
