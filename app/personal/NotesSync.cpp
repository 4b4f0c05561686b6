#include "app/personal/NotesSync.h"

#include "foundation/Text.h"
#include "shared-apple/MessageTooLong.h"

#include <utility>

namespace morvex {

namespace {

constexpr std::size_t longestTitle = 60;

} // namespace

NotesSync::NotesSync(PoznamkyStore& poznamky, SouhrnyStore& souhrny, Services services)
    : poznamky_(poznamky),
      souhrny_(souhrny),
      phoneLink_(services.phone),
      scope_(services.scope),
      tellTrouble_(std::move(services.tellTrouble)),
      potvrzovani_(services.main) {
    noteChanged_ = poznamky_.priZmene([this](const MorvexNote& note) { poslatPoznamku(note); });
}

Task<void> NotesSync::prijmout(MacPayload::NoteUpdate zprava, std::shared_ptr<SecureLink> link) {
    const MacPayload::NoteAck taken{zprava.note.id, zprava.note.revision};
    co_await zaradit(
        {poznamky_.prijmout(std::move(zprava.note)), std::move(link), {taken}, noteAckID(taken.id)});
}

Task<void> NotesSync::prijmout(MacPayload::SummaryUpdate zprava, std::shared_ptr<SecureLink> link) {
    const MacPayload::SummaryAck taken{zprava.summary.id, zprava.summary.revision};
    co_await zaradit({souhrny_.prijmout(std::move(zprava.summary)),
                      std::move(link),
                      {taken},
                      "summary-ack:" + taken.id.text()});
}

Task<void> NotesSync::zaradit(Prijaty zaznam) {
    prijate_.push_back(std::move(zaznam));
    if (potvrzovani_.live() == 0) potvrzovani_.spawn(potvrzovat());
    // One record that cannot be saved fails the common save of all waiting records. The same number of
    // records is then saved one by one, so that each of the others succeeds when the phone offers it again.
    const bool isAlone = poJednom_ > 0;
    if (isAlone) --poJednom_;
    if (isAlone || prijate_.size() >= mostWaiting) co_await vyrizeno();
}

Task<void> NotesSync::potvrzovat() {
    for (; !prijate_.empty(); prijate_.pop_front()) {
        auto& zaznam = prijate_.front();
        if (!co_await std::move(zaznam.ulozeni))
            ++poJednom_;
        else if (zaznam.spojeni)
            (void)co_await zaznam.spojeni->poslat(std::move(zaznam.potvrzeni), std::move(zaznam.requestID));
    }
}

Task<void> NotesSync::vyrizeno() {
    poznamky_.spechat();
    souhrny_.spechat();
    co_await potvrzovani_.join();
}

void NotesSync::poslatPoznamku(const MorvexNote& note) {
    if (phoneLink_.jePritomne()) scope_.spawn(odeslat(note));
}

Task<void> NotesSync::doplnit(std::shared_ptr<SecureLink> link) {
    // Once the phone receives a note from here, it takes it for stored, so all notes are saved first.
    co_await vyrizeno();
    // Iterates over ids, because notes may change between two sends. Notes that are added meanwhile are sent
    // separately. A note that the phone sends meanwhile is acknowledged when it is saved.
    for (const auto& id : poznamky_.ids()) {
        if (!link || phoneLink_.soucasne() != link) co_return;
        if (const auto* note = poznamky_.keptNote(id)) co_await odeslat(*note);
    }
}

Task<void> NotesSync::odeslat(MorvexNote note) {
    auto sent = co_await phoneLink_.poslat({MacPayload::NoteUpdate{note}}, requestID(note));
    if (!sent && sent.error().as<MessageTooLong>()) tellTooLong(note);
}

void NotesSync::tellTooLong(const MorvexNote& note) {
    if (!tooLong_.insert(requestID(note)).second) return;
    tellTrouble_("Poznámka „{nazev}“ je na přenos příliš dlouhá, telefon ji nedostane."_sentence(
        excerpt(note.title, longestTitle)));
}

} // namespace morvex
