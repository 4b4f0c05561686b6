#include "shared/trust/Crypto.h"

#include "shared/trust/CryptoError.h"
#include "tests/support/SmallOrderPoints.h"
#include "tests/support/TrustSupport.h"

#include <gtest/gtest.h>
#include <openssl/err.h>

#include <climits>
#include <sys/mman.h>

namespace morvex {

namespace {

using test::causeOf;
using test::hex;
using test::key32;
using test::unhex;

void expectFailure(const auto& result, CryptoFailure failure) {
    auto* cause = causeOf<CryptoError>(result);
    ASSERT_TRUE(cause);
    EXPECT_EQ(cause->failure, failure);
}

Bytes counting(std::uint8_t first, std::size_t size) {
    Bytes bytes(size);
    for (auto& byte : bytes) byte = first++;
    return bytes;
}

} // namespace

// FIPS 180-4, published examples.
TEST(Crypto, HashesWithSha256) {
    EXPECT_EQ(hex(sha256({})), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hex(sha256(asBytes("abc"))),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(hex(sha256(asBytes("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"))),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

// RFC 5869, appendix A.1 to A.3.
TEST(Crypto, DerivesWithHkdf) {
    Bytes repeated(22, 0x0b);
    EXPECT_EQ(hex(hkdfSha256<42>(repeated, unhex("000102030405060708090a0b0c"), unhex("f0f1f2f3f4f5f6f7f8f9"))
                      .view()),
              "3cb25f25faacd57a90434f64d0362f2a2d2d0a90cf1a5a4c5db02d56ecc4c5bf34007208d5b887185865");
    EXPECT_EQ(
        hex(hkdfSha256<82>(counting(0x00, 80), counting(0x60, 80), counting(0xb0, 80)).view()),
        "b11e398dc80327a1c8e7f78c596a49344f012eda2d4efad8a050cc4c19afa97c59045a99cac7827271cb41c65e590e09"
        "da3275600c2f09b8367793a9aca3db71cc30c58179ec3e87c14c01d5c1f3434f1d87");
    EXPECT_EQ(hex(hkdfSha256<42>(repeated, {}, {}).view()),
              "8da4e775a563c18f715f802a063c5a31b8a11f5c5ee1879ec3454e5f3c738d2d9d201395faa4b61a96c8");
}

// RFC 5869, section 2.2: a salt that is not given is a string of zeros as long as the hash.
TEST(Crypto, TakesAnEmptySaltForZeros) {
    Bytes keyMaterial(32, 7), zeros(32);
    EXPECT_EQ(hex(hkdfSha256<32>(keyMaterial, {}, asBytes("info")).view()),
              hex(hkdfSha256<32>(keyMaterial, zeros, asBytes("info")).view()));
}

// RFC 8032, section 7.1: tests 1, 2, 3 and SHA(abc).
TEST(Crypto, SignsAndVerifiesWithEd25519) {
    struct {
        const char* privateKey;
        const char* publicKey;
        const char* message;
        const char* signature;
    } table[] = {
        {"9d61b19deffd5a60ba844af492ec2cc44449c5697b326919703bac031cae7f60",
         "d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a", "",
         "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e39701cf9b46b"
         "d25bf5f0595bbe24655141438e7a100b"},
        {"4ccd089b28ff96da9db6c346ec114e0f5b8a319f35aba624da8cf6ed4fb8a6fb",
         "3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c", "72",
         "92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da085ac1e43e15996e458f3613d0f11d8c"
         "387b2eaeb4302aeeb00d291612bb0c00"},
        {"c5aa8df43f9f837bedb7442f31dcb7b166d38535076f094b85ce3a2e0b4458f7",
         "fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025", "af82",
         "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac18ff9b538d16f290ae67f760984dc659"
         "4a7c15e9716ed28dc027beceea1ec40a"},
        {"833fe62409237b9d62ec77587520911e9a759cec1d19755b7da901b96dca3d42",
         "ec172b93ad5e563bf4932c70e1245034c35467ef2efd4d64ebf819683467e2bf",
         "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a2192992a274fc1a836ba3c23a3feebbd"
         "454d4423643ce80e2a9ac94fa54ca49f",
         "dc2a4459e7369633a52b1bf277839a00201009a3efbf3ecb69bea2186c26b58909351fc9ac90b3ecfdfbc7c66431e030"
         "3dca179c138ac17ad9bef1177331a704"},
    };

    for (auto& row : table) {
        auto privateKey = key32(unhex(row.privateKey));
        auto message = unhex(row.message);
        EXPECT_EQ(hex(ed25519PublicKey(privateKey)), row.publicKey);
        EXPECT_EQ(hex(ed25519Sign(message, privateKey)), row.signature);
        EXPECT_TRUE(ed25519Verify(unhex(row.signature), message, unhex(row.publicKey)));
        message.push_back(0);
        EXPECT_FALSE(ed25519Verify(unhex(row.signature), message, unhex(row.publicKey)));
    }
}

TEST(Crypto, VerificationOfUnusableInputIsFalseWithoutAnError) {
    auto publicKey = unhex("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a");
    auto signature =
        unhex("e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e3970"
              "1cf9b46bd25bf5f0595bbe24655141438e7a100b");
    ASSERT_TRUE(ed25519Verify(signature, {}, publicKey));
    // The same signature with the order of the group added to its second half (RFC 8032, section 5.1.7,
    // refuses it).
    auto malleable =
        unhex("e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901554c8c7872aa064e049dbb3013"
              "fbf29380d25bf5f0595bbe24655141438e7a101b");
    Bytes noPoint(32, 0xff), longer = publicKey, longSignature = signature;
    longer.push_back(0);
    longSignature.push_back(0);

    struct {
        const char* what;
        ByteView signature, key;
    } table[] = {
        {"key of 31 bytes", signature, ByteView(publicKey).first(31)},
        {"key of 33 bytes", signature, longer},
        {"no key", signature, {}},
        {"key that is no point", signature, noPoint},
        {"no signature", {}, publicKey},
        {"signature of 63 bytes", ByteView(signature).first(63), publicKey},
        {"signature of 65 bytes", longSignature, publicKey},
        {"malleable signature", malleable, publicKey},
    };

    for (auto& row : table) EXPECT_FALSE(ed25519Verify(row.signature, {}, row.key)) << row.what;
}

// RFC 7748, section 5.2, the two single computations.
TEST(Crypto, AgreesWithX25519) {
    auto agreed = [](const char* privateKey, const char* publicKey) {
        return hex(x25519(key32(unhex(privateKey)), key32(unhex(publicKey))).value().view());
    };
    EXPECT_EQ(agreed("a546e36bf0527c9d3b16154b82465edd62144c0ac1fc5a18506a2244ba449ac4",
                     "e6db6867583030db3594c1a424b15f7c726624ec26b3353b10a903a6d0ab1c4c"),
              "c3da55379de9c6908e94ea4df28d084f32eccf03491c71f754b4075577a28552");
    EXPECT_EQ(agreed("4b66e9d4d1b4673c5ad22691957d6af5c11b6421e0ea01d42ca4169e7918ba0d",
                     "e5210f12786811d3f4b7959d0538ae2c31dbe7106fc03c3efc4cd549c715a493"),
              "95cbde9476e8907d7aade45cb4b873f88b595a68799fa152e6f8f7647aac7957");
}

// RFC 7748, section 5.2, the iterated computation.
TEST(Crypto, AgreesWithX25519AThousandTimesOver) {
    auto k = key32(unhex("0900000000000000000000000000000000000000000000000000000000000000"));
    auto u = k;
    for (int round = 0; round < 1000; ++round) {
        auto next = key32(x25519(k, u).value().view());
        u = std::exchange(k, next);
        if (round == 0) EXPECT_EQ(hex(k), "422c8e7a6227d7bca1350b3e2bb7279f7897b87bb6854b783c60e80311ae3079");
    }
    EXPECT_EQ(hex(k), "684cf59ba83309552800ef566f2f4d3c1c3887c49360e3875f2eb94d99532c51");
}

// RFC 7748, section 6.1.
TEST(Crypto, BothSidesOfX25519ReachTheSameSecret) {
    auto alice = key32(unhex("77076d0a7318a57d3c16c17251b26645df4c2f87ebc0992ab177fba51db92c2a"));
    auto bob = key32(unhex("5dab087e624a8a4b79e17f8b83800ee66f3bb1292618b6fd1c2f8b27ff88e0eb"));
    EXPECT_EQ(hex(x25519PublicKey(alice)),
              "8520f0098930a754748b7ddcb43ef75a0dbf3a0d26381af4eba4a98eaa9b4e6a");
    EXPECT_EQ(hex(x25519PublicKey(bob)), "de9edb7d7b7dc1b4d35b61c2ece435373f8343c85b78674dadfc7e146f882b4f");
    auto expected = "4a5d9d5ba4ce2de1728e3bf480350f25e07e21c947d19e3376f09b3c1e161742";
    EXPECT_EQ(hex(x25519(alice, x25519PublicKey(bob)).value().view()), expected);
    EXPECT_EQ(hex(x25519(bob, x25519PublicKey(alice)).value().view()), expected);
}

TEST(Crypto, RefusesX25519KeysThatGiveASecretOfZeros) {
    RawKey privateKey;
    fillRandom(privateKey);
    for (const auto* point : test::smallOrderPoints)
        expectFailure(x25519(privateKey, key32(unhex(point))), CryptoFailure::refusedKey);
}

// RFC 8439, section 2.8.2.
TEST(Crypto, SealsWithChaCha20Poly1305) {
    auto key = key32(counting(0x80, 32));
    auto nonce = unhex("070000004041424344454647"), associated = unhex("50515253c0c1c2c3c4c5c6c7");
    auto plaintext =
        asBytes("Ladies and Gentlemen of the class of '99: If I could offer you only one tip for the "
                "future, sunscreen would be it.");
    auto sealed = chachaSeal(key, nonce, associated, plaintext).value();
    EXPECT_EQ(
        hex(sealed.ciphertext),
        "d31a8d34648e60db7b86afbc53ef7ec2a4aded51296e08fea9e2b5a736ee62d63dbea45e8ca9671282fafb69da92728b"
        "1a71de0a9e060b2905d6a5b67ecd3b3692ddbd7f2d778b8c9803aee328091b58fab324e4fad675945585808b4831d7bc"
        "3ff4def08e4b7a9de576d26586cec64b6116");
    EXPECT_EQ(hex(sealed.tag), "1ae10b594f09e26a7e902ecbd0600691");
    EXPECT_EQ(asText(chachaOpen(key, nonce, associated, sealed.ciphertext, sealed.tag).value()),
              asText(plaintext));
}

// RFC 8439, appendix A.5.
TEST(Crypto, OpensWithChaCha20Poly1305) {
    auto key = key32(unhex("1c9240a5eb55d38af333888604f6b5f0473917c1402b80099dca5cbc207075c0"));
    auto ciphertext = unhex(
        "64a0861575861af460f062c79be643bd5e805cfd345cf389f108670ac76c8cb24c6cfc18755d43eea09ee94e382d26b0"
        "bdb7b73c321b0100d4f03b7f355894cf332f830e710b97ce98c8a84abd0b948114ad176e008d33bd60f982b1ff37c855"
        "9797a06ef4f0ef61c186324e2b3506383606907b6a7c02b0f9f6157b53c867e4b9166c767b804d46a59b5216cde7a4e9"
        "9040c5a40433225ee282a1b0a06c523eaf4534d7f83fa1155b0047718cbc546a0d072b04b3564eea1b422273f548271a"
        "0bb2316053fa76991955ebd63159434ecebb4e466dae5a1073a6727627097a1049e617d91d361094fa68f0ff77987130"
        "305beaba2eda04df997b714d6c6f2c29a6ad5cb4022b02709b");
    auto opened = chachaOpen(key, unhex("000000000102030405060708"), unhex("f33388860000000000004e91"),
                             ciphertext, unhex("eead9d67890cbb22392336fea1851f38"));
    EXPECT_EQ(
        asText(opened.value()),
        "Internet-Drafts are draft documents valid for a maximum of six months and may be updated, replaced, "
        "or "
        "obsoleted by other documents at any time. It is inappropriate to use Internet-Drafts as reference "
        "material or to cite them other than as /“work in progress./”");
}

TEST(Crypto, SealsAndOpensNothingAtAll) {
    RawKey key{};
    Bytes nonce(nonceSize);
    auto sealed = chachaSeal(key, nonce, {}, {}).value();
    EXPECT_TRUE(sealed.ciphertext.empty());
    EXPECT_EQ(chachaOpen(key, nonce, {}, {}, sealed.tag).value(), Bytes{});
    sealed.tag[0] ^= 1;
    expectFailure(chachaOpen(key, nonce, {}, {}, sealed.tag), CryptoFailure::unverifiable);
}

TEST(Crypto, ASingleChangedBitAnywhereIsUnverifiable) {
    auto key = key32(counting(1, 32));
    auto nonce = counting(2, nonceSize), associated = counting(3, 9), plaintext = counting(4, 70);
    auto sealed = chachaSeal(key, nonce, associated, plaintext).value();
    auto changed = [&](auto& bytes) {
        for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
            auto mask = static_cast<std::uint8_t>(1u << bit % 8);
            bytes[bit / 8] ^= mask;
            expectFailure(chachaOpen(key, nonce, associated, sealed.ciphertext, sealed.tag),
                          CryptoFailure::unverifiable);
            bytes[bit / 8] ^= mask;
        }
    };
    changed(key);
    changed(nonce);
    changed(associated);
    changed(sealed.ciphertext);
    changed(sealed.tag);
    EXPECT_EQ(chachaOpen(key, nonce, associated, sealed.ciphertext, sealed.tag).value(), plaintext);
}

TEST(Crypto, NamesANonceAndATagOfAWrongSize) {
    RawKey key{};
    for (std::size_t size : {0u, 8u, 11u, 13u, 16u}) {
        expectFailure(chachaSeal(key, Bytes(size), {}, {}), CryptoFailure::wrongNonce);
        expectFailure(chachaOpen(key, Bytes(size), {}, {}, Bytes(tagSize)), CryptoFailure::wrongNonce);
    }
    for (std::size_t size : {0u, 12u, 15u, 17u, 32u})
        expectFailure(chachaOpen(key, Bytes(nonceSize), {}, {}, Bytes(size)), CryptoFailure::wrongTag);
}

TEST(Crypto, RefusesMoreBytesThanTheLibraryTakesAtOnce) {
    auto size = static_cast<std::size_t>(INT_MAX) + 1;
    // Addresses only: whoever touched the bytes would crash.
    void* addresses = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(addresses, MAP_FAILED);
    ByteView tooLong(static_cast<const std::uint8_t*>(addresses), size);
    RawKey key{};
    Bytes nonce(nonceSize), tag(tagSize);
    expectFailure(chachaSeal(key, nonce, {}, tooLong), CryptoFailure::tooLong);
    expectFailure(chachaSeal(key, nonce, tooLong, {}), CryptoFailure::tooLong);
    expectFailure(chachaOpen(key, nonce, {}, tooLong, tag), CryptoFailure::tooLong);
    expectFailure(chachaOpen(key, nonce, tooLong, {}, tag), CryptoFailure::tooLong);
    munmap(addresses, size);
}

TEST(Crypto, RefusedInputLeavesNoErrorForOtherUsersOfTheLibrary) {
    ERR_clear_error();
    RawKey key{};
    Bytes noPoint(32, 0xff), signature(64), nonce(nonceSize), tag(tagSize);
    EXPECT_FALSE(ed25519Verify(signature, {}, noPoint));
    EXPECT_FALSE(ed25519Verify({}, {}, key));
    EXPECT_FALSE(x25519(key, key));
    EXPECT_FALSE(chachaOpen(key, nonce, {}, {}, tag));
    EXPECT_EQ(ERR_peek_error(), 0u);
}

TEST(Crypto, RandomBytesDiffer) {
    RawKey one{}, other{};
    fillRandom(one);
    fillRandom(other);
    EXPECT_NE(one, other);
    EXPECT_NE(one, RawKey{});
}

TEST(CryptoError, HasWordsForEveryFailure) {
    for (auto failure : {CryptoFailure::refusedKey, CryptoFailure::wrongNonce, CryptoFailure::wrongTag,
                         CryptoFailure::unverifiable, CryptoFailure::tooLong, CryptoFailure::libraryFailed})
        EXPECT_TRUE(CryptoError{failure}.popis().czech().ends_with('.'));
}

} // namespace morvex
