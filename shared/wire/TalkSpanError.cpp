#include "shared/wire/TalkSpanError.h"

#include "shared/base/Overloaded.h"
#include "shared/base/Require.h"
#include "shared/wire/Describe.h"

#include <cmath>

namespace morvex {
namespace {

std::int64_t wholeSeconds(double seconds) {
    require(std::abs(seconds) < 0x1p63, "an age that is not finite has no words");
    return static_cast<std::int64_t>(seconds);
}

} // namespace

Sentence TalkSpanError::popis() const {
    return std::visit(
        Overloaded{
            [](const ProtocolMismatch& e) {
                return "Telefon a Mac mluví jinou verzí protokolu ({moje} proti {jeho}). Aktualizuj tu "
                       "starší "
                       "aplikaci."_sentence(e.mine, e.theirs);
            },
            [](const NotPaired& e) { return "Zařízení není spárované. {duvod}"_sentence(e.text); },
            [](const BadSignature&) -> Sentence {
                return "Podpis zprávy nesedí. Spojení jsem zahodil."_sentence;
            },
            [](const Expired& e) {
                return "Zpráva dorazila pozdě, po {vterin} vteřinách. Neprovedl jsem ji."_sentence(
                    wholeSeconds(e.age));
            },
            [](const Replay&) -> Sentence {
                return "Tuhle zprávu jsem už jednou zpracoval. Podruhé ji neprovádím."_sentence;
            },
            [](const MacOffline&) -> Sentence { return "Mac není dostupný."_sentence; },
            [](const MacBusy& e) { return "Mac právě pracuje: {cim}."_sentence(e.text); },
            [](const ToolUnavailable& e) {
                return "Nástroj {nastroj} není na Macu k dispozici: {duvod}"_sentence(e.tool, e.reason);
            },
            [](const NotAllowed& e) {
                return "Nástroj {nastroj} není povolený: {duvod}"_sentence(e.tool, e.reason);
            },
            [](const ApprovalRequired& e) { return "Tohle potřebuje potvrzení: {co}"_sentence(e.text); },
            [](const Rejected& e) {
                return e.reason ? "Zamítnuto: {duvod}"_sentence(*e.reason) : Sentence("Zamítnuto."_sentence);
            },
            [](const TimedOut& e) {
                return "Operace překročila limit {vterin} vteřin a byla zastavena."_sentence(e.seconds);
            },
            [](const Cancelled&) -> Sentence { return "Zrušeno."_sentence; },
            [](const OutsideAllowedFolders& e) {
                return "Cesta {cesta} leží mimo povolené složky. Nesahám na ni."_sentence(e.path);
            },
            [](const ToolFailed& e) {
                return "{nastroj} skončil chybou: {zprava}"_sentence(e.tool, e.message);
            },
        },
        value);
}

template <>
inline constexpr auto caseNames<TalkSpanError> = std::to_array<std::string_view>(
    {"protocolMismatch", "notPaired", "badSignature", "expired", "replay", "macOffline", "macBusy",
     "toolUnavailable", "notAllowed", "approvalRequired", "rejected", "timedOut", "cancelled",
     "outsideAllowedFolders", "toolFailed"});

void describe(auto& io, Is<TalkSpanError::ProtocolMismatch> auto& e) {
    io.required("mine", e.mine);
    io.required("theirs", e.theirs);
}

template <class T>
concept CaseWithText = Is<T, TalkSpanError::NotPaired> || Is<T, TalkSpanError::MacBusy> ||
                       Is<T, TalkSpanError::ApprovalRequired>;

void describe(auto& io, CaseWithText auto& e) {
    io.required("_0", e.text);
}

template <class T>
concept CaseOfTool = Is<T, TalkSpanError::ToolUnavailable> || Is<T, TalkSpanError::NotAllowed>;

void describe(auto& io, CaseOfTool auto& e) {
    io.required("tool", e.tool);
    io.required("reason", e.reason);
}

void describe(auto& io, Is<TalkSpanError::Expired> auto& e) {
    io.required("age", e.age);
}

void describe(auto& io, Is<TalkSpanError::Rejected> auto& e) {
    io.optional("reason", e.reason);
}

void describe(auto& io, Is<TalkSpanError::TimedOut> auto& e) {
    io.required("seconds", e.seconds);
}

void describe(auto& io, Is<TalkSpanError::OutsideAllowedFolders> auto& e) {
    io.required("path", e.path);
}

void describe(auto& io, Is<TalkSpanError::ToolFailed> auto& e) {
    io.required("tool", e.tool);
    io.required("message", e.message);
}

template struct Codec<TalkSpanError>;

} // namespace morvex
