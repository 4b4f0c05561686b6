#include "app/agents/UkolAgenta.h"

#include "foundation/Paths.h"
#include "shared/wire/Describe.h"

#include <algorithm>

namespace morvex {

namespace {

std::string inOneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    std::ranges::replace(text, '\r', ' ');
    return text;
}

} // namespace

void describe(auto& io, Is<UkolAgenta> auto& ukol) {
    io.required("id", ukol.id);
    io.assumed("workItemID", ukol.workItemID, ukol.id);
    io.optional("conversationID", ukol.conversationID);
    io.required("nastroj", ukol.nastroj);
    io.required("nazev", ukol.nazev);
    io.assumed("instrukce", ukol.instrukce, inOneLine(ukol.nazev));
    io.required("slozka", ukol.slozka);
    io.required("zalozeno", ukol.zalozeno);
    io.optional("dokonceno", ukol.dokonceno);
    io.optional("relace", ukol.relace);
    io.required("stav", ukol.stav);
    io.optional("shrnuti", ukol.shrnuti);
    io.optional("chyba", ukol.chyba);
    io.assumed("aktualizovano", ukol.aktualizovano, ukol.dokonceno.value_or(ukol.zalozeno));
    io.assumed("revize", ukol.revize, 1);
    io.assumed("dorucenaRevize", ukol.dorucenaRevize, ukol.revize);
}

template struct Codec<UkolAgenta>;
template struct Codec<std::vector<UkolAgenta>>;

WorkItemStatus::Case statusForPhone(UkolAgenta::Stav stav) {
    switch (stav) {
    case UkolAgenta::Stav::bezi:
        return WorkItemStatus::inProgress;
    case UkolAgenta::Stav::hotovo:
        return WorkItemStatus::completed;
    case UkolAgenta::Stav::chyba:
        return WorkItemStatus::failed;
    case UkolAgenta::Stav::preruseno:
        return WorkItemStatus::interrupted;
    }
    std::unreachable();
}

WorkItem asWorkItem(const UkolAgenta& ukol) {
    WorkItem item;
    item.id = ukol.workItemID;
    item.conversationID = ukol.conversationID;
    item.title = ukol.nazev;
    item.originalRequest = ukol.instrukce;
    item.summary = ukol.shrnuti;
    item.status = statusForPhone(ukol.stav);
    if (ukol.chyba) item.lastError = ukol.chyba->czech();
    item.source = WorkItemSource::mac;
    item.createdAt = ukol.zalozeno;
    item.updatedAt = ukol.aktualizovano;
    item.revision = ukol.revize;
    if (ukol.relace)
        item.agent = AgentContinuation{ukol.nastroj, ukol.relace, paths::lastComponent(ukol.slozka)};
    return item;
}

} // namespace morvex
