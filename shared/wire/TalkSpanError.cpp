#include "shared/wire/TalkSpanError.h"

#include "shared/base/Overloaded.h"
#include "shared/base/Require.h"
#include "shared/wire/Describe.h"

#include <cmath>

namespace morvex {
namespace {

std::string wholeSecondsText(double seconds) {
    vyzaduj(std::abs(seconds) < 0x1p63, "an age that is not finite has no words");
    return std::to_string(static_cast<std::int64_t>(seconds));
}

} // namespace

std::string TalkSpanError::popis() const {
    return std::visit(
        Overloaded{
            [](const ProtocolMismatch& e) {
                return "Telefon a Mac mluví jinou verzí protokolu (" + e.mine + " proti " + e.theirs +
                       "). Aktualizuj tu starší aplikaci.";
            },
            [](const NotPaired& e) { return "Zařízení není spárované. " + e.text; },
            [](const BadSignature&) -> std::string { return "Podpis zprávy nesedí. Spojení jsem zahodil."; },
            [](const Expired& e) {
                return "Zpráva dorazila pozdě, po " + wholeSecondsText(e.age) +
                       " vteřinách. Neprovedl jsem ji.";
            },
            [](const Replay&) -> std::string {
                return "Tuhle zprávu jsem už jednou zpracoval. Podruhé ji neprovádím.";
            },
            [](const MacOffline&) -> std::string { return "Mac není dostupný."; },
            [](const MacBusy& e) { return "Mac právě pracuje: " + e.text + "."; },
            [](const ToolUnavailable& e) {
                return "Nástroj " + e.tool + " není na Macu k dispozici: " + e.reason;
            },
            [](const NotAllowed& e) { return "Nástroj " + e.tool + " není povolený: " + e.reason; },
            [](const ApprovalRequired& e) { return "Tohle potřebuje potvrzení: " + e.text; },
            [](const Rejected& e) { return e.reason ? "Zamítnuto: " + *e.reason : "Zamítnuto."; },
            [](const TimedOut& e) {
                return "Operace překročila limit " + std::to_string(e.seconds) + " vteřin a byla zastavena.";
            },
            [](const Cancelled&) -> std::string { return "Zrušeno."; },
            [](const OutsideAllowedFolders& e) {
                return "Cesta " + e.path + " leží mimo povolené složky. Nesahám na ni.";
            },
            [](const ToolFailed& e) { return e.tool + " skončil chybou: " + e.message; },
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
