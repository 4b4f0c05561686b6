#include "relay/PairCalls.h"

#include "shared/base/Base64.h"
#include "shared/trust/Base32.h"
#include "shared/trust/Fingerprint.h"
#include "shared/trust/Revocation.h"
#include "shared/trust/UsableSigningKey.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace morvex {

using relayPaths::createPair;
using relayPaths::isAt;
using relayPaths::joinPair;
using relayPaths::revokeDevice;

namespace {

constexpr std::chrono::minutes tokenLifetime{10};
constexpr std::chrono::minutes signatureTolerance{5};

/// The HTTP status, and the words that the device shows.
std::pair<unsigned, const char*> meaning(CallRefusal cause) {
    switch (cause) {
    case CallRefusal::unreadable:
        return {400, "Požadavku nerozumím."};
    case CallRefusal::wrongFingerprint:
        return {400, "Označení zařízení neodpovídá jeho klíči."};
    case CallRefusal::unusableKey:
        return {400, "Klíč zařízení není bezpečný."};
    case CallRefusal::unknownToken:
        return {404, "Tenhle párovací kód neznám."};
    case CallRefusal::expiredToken:
        return {410, "Platnost párovacího kódu vypršela."};
    case CallRefusal::usedToken:
        return {410, "Tenhle párovací kód už někdo použil."};
    case CallRefusal::sameRole:
        return {409, "Spárovat se může jen telefon s Macem."};
    case CallRefusal::sameDevice:
        return {409, "Zařízení se nemůže spárovat samo se sebou."};
    case CallRefusal::unknownPair:
        return {404, "Takový pár neznám."};
    case CallRefusal::notMember:
        return {403, "Zařízení do tohohle páru nepatří."};
    case CallRefusal::unknownTarget:
        return {404, "Odvolávané zařízení v tomhle páru není."};
    case CallRefusal::badSignature:
        return {403, "Podpis požadavku nesedí."};
    case CallRefusal::untimely:
        return {403, "Čas požadavku neodpovídá. Zkontroluj hodiny zařízení."};
    case CallRefusal::unknownCall:
        return {404, "Takovou adresu nemám."};
    case CallRefusal::wrongMethod:
        return {405, "Tahle adresa čeká požadavek POST."};
    case CallRefusal::notSocket:
        return {426, "Tahle adresa je jen pro WebSocket."};
    case CallRefusal::wrongContentType:
        return {400, "Požadavek musí být JSON."};
    case CallRefusal::unknownCoding:
        return {501, "Takové kódování požadavku neumím."};
    case CallRefusal::unknownSocketVersion:
        return {426, "Takovou verzi WebSocketu neumím."};
    case CallRefusal::tooLarge:
        return {413, "Požadavek je moc velký."};
    case CallRefusal::tooMany:
        return {429, "Moc požadavků najednou. Zkus to za minutu."};
    case CallRefusal::tooManyPairs:
        return {429, "Z téhle adresy už dnes vzniklo moc párů. Zkus to zítra."};
    case CallRefusal::storeFailed:
        return {500, "Relay má potíže se svým úložištěm."};
    }
    std::unreachable();
}

std::chrono::seconds retryAfter(CallRefusal cause) {
    if (cause == CallRefusal::tooMany) return std::chrono::minutes{1};
    if (cause == CallRefusal::tooManyPairs) return std::chrono::days{1};
    return {};
}

CallReply storeFailed(const Error& error) {
    auto reply = refusal(CallRefusal::storeFailed);
    reply.trouble = error.popis().czech();
    return reply;
}

/// Only the hash is stored, so that reading the database does not allow to join.
Digest tokenHash(std::string_view token) {
    return sha256(asBytes(token));
}

/// Why a device must not become a member; nothing if it may.
std::optional<CallRefusal> whyNotTaken(const DeviceID& device, const SigningPublicKey& key) {
    if (deviceID(key) != device) return CallRefusal::wrongFingerprint;
    if (!isUsableSigningKey(key.raw)) return CallRefusal::unusableKey;
    return std::nullopt;
}

bool isTimely(Date signedAt, Date now) {
    return std::chrono::abs(now - signedAt) <= signatureTolerance;
}

} // namespace

FreshPair FreshPair::make() {
    std::array<std::uint8_t, 16> id{};
    std::array<std::uint8_t, 32> token{};
    fillRandom(id);
    fillRandom(token);
    FreshPair fresh{PairID{Base32::encode(id)}, base64Encode(token)};
    std::ranges::replace(fresh.token, '+', '-');
    std::ranges::replace(fresh.token, '/', '_');
    std::erase(fresh.token, '=');
    return fresh;
}

CallReply refusal(CallRefusal cause) {
    const auto [status, words] = meaning(cause);
    return {.status = status, .body = encode(VaporDuvod{words}), .retryAfter = retryAfter(cause)};
}

bool PairCalls::creates(std::string_view path) {
    return isAt(path, createPair);
}

bool PairCalls::knows(std::string_view path) {
    return creates(path) || isAt(path, joinPair) || isAt(path, revokeDevice);
}

CallReply PairCalls::answer(std::string_view path, std::string_view body, Date now) {
    if (isAt(path, createPair)) return create(body, now);
    if (isAt(path, joinPair)) return join(body, now);
    if (isAt(path, revokeDevice)) return revoke(body, now);
    return refusal(CallRefusal::unknownCall);
}

CallReply PairCalls::create(std::string_view body, Date now) {
    const auto request = decode<ZalozitPozadavek>(body);
    if (!request) return refusal(CallRefusal::unreadable);
    if (const auto cause = whyNotTaken(request->deviceID, request->key)) return refusal(*cause);

    const auto fresh = fresh_();
    const auto expiresAt = now + tokenLifetime;
    const Member creator{request->deviceID, request->key, request->role};
    const auto created = store_.create(fresh.id, creator, tokenHash(fresh.token), expiresAt);
    if (!created) return storeFailed(created.error());
    return {.body = encode(ZalozitOdpoved{fresh.id, fresh.token, expiresAt})};
}

CallReply PairCalls::join(std::string_view body, Date now) {
    const auto request = decode<PripojitPozadavek>(body);
    if (!request) return refusal(CallRefusal::unreadable);
    if (const auto cause = whyNotTaken(request->deviceID, request->key)) return refusal(*cause);

    const auto pair = store_.findByToken(tokenHash(request->pairingToken));
    if (!pair) return storeFailed(pair.error());
    if (!*pair) return refusal(CallRefusal::unknownToken);
    if ((*pair)->members.size() != 1 || (*pair)->isRevoked) return refusal(CallRefusal::usedToken);
    if (now > (*pair)->expiresAt) return refusal(CallRefusal::expiredToken);
    const auto& creator = (*pair)->members.front();
    if (creator.device == request->deviceID) return refusal(CallRefusal::sameDevice);
    if (creator.role == request->role) return refusal(CallRefusal::sameRole);

    const auto joined = store_.join((*pair)->id, {request->deviceID, request->key, request->role});
    if (!joined) return storeFailed(joined.error());
    if (!*joined) return refusal(CallRefusal::usedToken);
    return {.body = encode(PripojitOdpoved{(*pair)->id})};
}

CallReply PairCalls::revoke(std::string_view body, Date now) {
    const auto request = decode<OdvolatPozadavek>(body);
    if (!request) return refusal(CallRefusal::unreadable);

    const auto pair = store_.find(request->pairID);
    if (!pair) return storeFailed(pair.error());
    if (!*pair) return refusal(CallRefusal::unknownPair);
    const auto* by = (*pair)->member(request->by);
    if (!by) return refusal(CallRefusal::notMember);
    const auto signedText =
        revocationSignedText(request->pairID, request->target, request->by, request->signedAt);
    if (!ed25519Verify(request->signature, asBytes(signedText), by->key.raw))
        return refusal(CallRefusal::badSignature);
    if (!(*pair)->member(request->target)) return refusal(CallRefusal::unknownTarget);
    if (!isTimely(request->signedAt, now)) return refusal(CallRefusal::untimely);

    const auto revoked = store_.revoke(request->pairID, now);
    if (!revoked) return storeFailed(revoked.error());
    return {.status = 204, .revoked = request->pairID};
}

} // namespace morvex
