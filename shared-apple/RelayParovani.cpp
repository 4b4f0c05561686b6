#include "shared-apple/RelayParovani.h"

#include "foundation/Text.h"
#include "shared/base/Try.h"
#include "shared/base/Utf8.h"
#include "shared/trust/Revocation.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"

#include <utility>

namespace morvex {

namespace {

/// The reason is for a person to read.
constexpr std::size_t longestReason = 500;

RelayParovani::RelayChyba refusal(const HttpReply& reply) {
    auto body = decode<VaporDuvod>(reply.body);
    if (body && body->reason) return {reply.status, Sentence(excerpt(*body->reason, longestReason))};
    return {reply.status, "Relay odmítl požadavek ({stav})."_sentence(reply.status)};
}

/// What the relay draws is shown as a code and kept: it is there, and short enough for both.
Result<void> checkDrawn(std::string_view field, std::string_view drawn) {
    constexpr std::size_t longest = 1000;
    constexpr std::size_t longestQuote = 40;
    if (!drawn.empty() && drawn.size() <= longest) return {};
    return fail(DecodeError{DecodeError::Reason::badText, std::string(field),
                            Sentence(clipped(drawn, longestQuote))});
}

} // namespace

Task<Result<RelayParovani::Zalozeni>> RelayParovani::zalozit(RelayAddress relayURL,
                                                             std::shared_ptr<const DeviceIdentity> identita,
                                                             DeviceRole role) {
    ZalozitPozadavek pozadavek{identita->deviceID(), identita->signingKey(), role};
    CO_TRY(auto, body, co_await post(relayURL.call(relayPaths::createPair), encode(pozadavek)));
    CO_TRY(auto, odpoved, decode<ZalozitOdpoved>(body));
    CO_CHECK(checkDrawn("pairID", odpoved.pairID.rawValue));
    CO_CHECK(checkDrawn("pairingToken", odpoved.pairingToken));
    co_return Zalozeni{odpoved.pairID, odpoved.pairingToken, odpoved.expiresAt};
}

Task<Result<PairID>> RelayParovani::pripojit(RelayAddress relayURL, std::string pairingToken,
                                             std::shared_ptr<const DeviceIdentity> identita,
                                             DeviceRole role) {
    PripojitPozadavek pozadavek{std::move(pairingToken), identita->deviceID(), identita->signingKey(), role};
    CO_TRY(auto, body, co_await post(relayURL.call(relayPaths::joinPair), encode(pozadavek)));
    CO_TRY(auto, odpoved, decode<PripojitOdpoved>(body));
    CO_CHECK(checkDrawn("pairID", odpoved.pairID.rawValue));
    co_return odpoved.pairID;
}

Task<Result<void>> RelayParovani::odvolat(RelayAddress relayURL, PairID pair, DeviceID target,
                                          std::shared_ptr<const DeviceIdentity> identita) {
    OdvolatPozadavek pozadavek{std::move(pair), std::move(target), identita->deviceID(), clock_.now(), {}};
    auto signedText =
        revocationSignedText(pozadavek.pairID, pozadavek.target, pozadavek.by, pozadavek.signedAt);
    pozadavek.signature = identita->sign(asBytes(signedText));
    CO_CHECK(co_await post(relayURL.call(relayPaths::revokeDevice), encode(pozadavek)));
    co_return Result<void>{};
}

Task<Result<std::string>> RelayParovani::post(std::string address, std::string body) {
    HttpRequest request;
    request.method = "POST";
    request.url = std::move(address);
    request.headers = {{"Content-Type", "application/json"}};
    request.body = std::move(body);
    request.timeLimit = std::chrono::seconds(15);
    CO_TRY(auto, reply, co_await http_.send(std::move(request)));
    if (reply.status == 0) co_return fail(RelayChyba{0, "Relay neodpověděl."_sentence});
    if (reply.status < 200 || reply.status > 299) co_return fail(refusal(reply));
    co_return std::move(reply.body);
}

} // namespace morvex
