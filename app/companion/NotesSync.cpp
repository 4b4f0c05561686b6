#include "app/companion/NotesSync.h"

#include "foundation/Text.h"
#include "shared-apple/MessageTooLong.h"

#include <string>
#include <utility>

namespace morvex {

namespace {

constexpr std::size_t longestTitle = 60;

} // namespace

NotesSync::NotesSync(PoznamkyStore& poznamky, SouhrnyStore& souhrny, PhoneLink& spojeni,
                     CompanionState& state, TaskScope& scope)
    : poznamky_(poznamky), souhrny_(souhrny), spojeni_(spojeni), state_(state), scope_(scope) {
    poznamky_.priZmene = [this](const MorvexNote& note) { poslatPoznamku(note); };
}

Task<void> NotesSync::prijmout(MacPayload::NoteUpdate zprava) {
    const MacPayload::NoteAck taken{zprava.note.id, zprava.note.revision};
    if (poznamky_.prijmout(std::move(zprava.note)))
        (void)co_await spojeni_.poslat({taken}, noteAckID(taken.id));
    else
        // A refused save has cost time: a phone that offers much to a full disk would stop everything else.
        co_await letOthersRun();
}

Task<void> NotesSync::prijmout(MacPayload::SummaryUpdate zprava) {
    const MacPayload::SummaryAck taken{zprava.summary.id, zprava.summary.revision};
    if (souhrny_.prijmout(std::move(zprava.summary)))
        (void)co_await spojeni_.poslat({taken}, "summary-ack:" + taken.id.text());
    else
        co_await letOthersRun();
}

void NotesSync::poslatPoznamku(const MorvexNote& note) {
    if (spojeni_.jePritomne()) scope_.spawn(odeslat(note));
}

Task<void> NotesSync::doplnit(std::shared_ptr<SecureLink> link) {
    // By index: notes may be added and changed between two sends, but never removed while one is under way.
    for (std::size_t i = 0; i < poznamky_.vsechny().size(); ++i) {
        if (!link || spojeni_.soucasne() != link) co_return;
        co_await odeslat(poznamky_.vsechny()[i]);
    }
}

Task<void> NotesSync::odeslat(MorvexNote note) {
    auto sent = co_await spojeni_.poslat({MacPayload::NoteUpdate{note}}, requestID(note));
    if (!sent && sent.error().as<MessageTooLong>()) tellTooLong(note);
}

void NotesSync::tellTooLong(const MorvexNote& note) {
    if (!tooLong_.insert(requestID(note)).second) return;
    state_.potiz = "Poznámka „" + excerpt(note.title, longestTitle) +
                   "“ je na přenos příliš dlouhá, telefon ji nedostane.";
}

} // namespace morvex
