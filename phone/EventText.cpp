#include "phone/EventText.h"

#include "foundation/Printable.h"
#include "phone/ResultText.h"
#include "phone/StatusText.h"
#include "phone/TaskText.h"
#include "shared/base/Overloaded.h"
#include "shared/wire/Json.h"
#include "shared/wire/JsonText.h"

#include <string_view>

namespace morvex {

namespace {

struct Words {
    std::string_view kind;
    std::string text;
    Style style = Style::plain;
};

std::string inJson(std::string_view text) {
    std::string json;
    appendJsonString(json, text);
    return json;
}

std::string brief(const MacStatus& status) {
    auto text = status.deviceName + ", nástrojů: " + std::to_string(status.tools.size());
    return status.runningTask ? text + ", pracuje: " + status.runningTask->tool : text;
}

Words wordsFor(const MacPayload& payload) {
    using P = MacPayload;
    return std::visit(
        Overloaded{
            [](const P::Status& told) { return Words{"stav Macu", brief(told.status)}; },
            [](const P::ToolProgress& told) { return Words{"průběh", told.text}; },
            [](const P::ToolResult& told) {
                return Words{"výsledek", resultJson(told.json), told.ok ? Style::good : Style::bad};
            },
            [](const P::WorkItemUpdate& told) { return Words{"úkol", taskText(told.item)}; },
            [](const P::NoteUpdate& told) {
                return Words{"poznámka", told.note.title + (told.note.deletedAt ? " (smazaná)" : "")};
            },
            [](const P::SummaryUpdate& told) { return Words{"souhrn", told.summary.title}; },
            [](const P::NoteAck& told) { return Words{"doručeno", "poznámka " + told.id.text()}; },
            [](const P::SummaryAck& told) { return Words{"doručeno", "souhrn " + told.id.text()}; },
            [](const P::WorkItemAck& told) { return Words{"doručeno", "úkol " + told.id.text()}; },
            [](const P::Approval& told) { return Words{"žádost", told.request.title, Style::strong}; },
            // Only phones send the other kinds; they may contain secrets.
            [](const auto&) { return Words{"zpráva", "nečekaná"}; },
        },
        payload.value);
}

std::optional<Words> wordsFor(const Inbox::Event& event, Date now) {
    using Told = std::optional<Words>;
    return std::visit(
        Overloaded{
            [now](const SecureLink::Stav& told) {
                return Told({"spojení", told.stav.popis(DeviceRole::mac, now).czech(), Style::faint});
            },
            [](const SecureLink::Zprava& told) { return Told(wordsFor(told.payload)); },
            [](const SecureLink::Chyba& told) { return Told({"potíž", told.text.czech(), Style::bad}); },
            [](const auto&) { return Told(); },
        },
        event);
}

} // namespace

std::optional<StyledLine> eventLine(const Inbox::Event& event, Date now, const TimeZone& zone) {
    auto words = wordsFor(event, now);
    if (!words) return std::nullopt;
    return StyledLine{{timeOfDay(now, zone) + "  ", Style::faint},
                      {std::string(words->kind) + ": "},
                      {printableLine(words->text), words->style}};
}

std::optional<std::string> eventJson(const Inbox::Event& event, Date now) {
    using Json = std::optional<std::string>;
    return std::visit(Overloaded{
                          [now](const SecureLink::Stav& told) {
                              return Json(R"({"event":"state","text":)" +
                                          inJson(told.stav.popis(DeviceRole::mac, now).czech()) + "}");
                          },
                          [](const SecureLink::Pripraveno&) { return Json(R"({"event":"ready"})"); },
                          [](const SecureLink::Chyba& told) {
                              return Json(R"({"event":"error","text":)" + inJson(told.text.czech()) + "}");
                          },
                          [](const SecureLink::Zprava& told) {
                              return Json(R"({"event":"message","requestID":)" + inJson(told.requestID) +
                                          R"(,"payload":)" + encode(told.payload) + "}");
                          },
                          [](const auto&) { return Json(); },
                      },
                      event);
}

std::vector<StyledLine> approvalLines(const ApprovalRequest& request, Date now) {
    auto left = wholeSeconds(request.expiresAt) - wholeSeconds(now);
    return {{{"Mac žádá o potvrzení: ", Style::bad}, {printableLine(request.title), Style::strong}},
            {{request.tool + ", zbývá " + std::to_string(left) + " s, ID " + request.id, Style::faint}},
            {{request.detail}}};
}

} // namespace morvex
