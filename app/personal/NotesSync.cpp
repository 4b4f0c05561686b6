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
      acknowledging_(services.main) {
    noteChanged_ = poznamky_.priZmene([this](const MorvexNote& note) { poslatPoznamku(note); });
}

Task<void> NotesSync::prijmout(MacPayload::NoteUpdate zprava, std::shared_ptr<SecureLink> link) {
    const MacPayload::NoteAck taken{zprava.note.id, zprava.note.revision};
    co_await enqueue(
        {poznamky_.prijmout(std::move(zprava.note)), std::move(link), {taken}, noteAckID(taken.id)});
}

Task<void> NotesSync::prijmout(MacPayload::SummaryUpdate zprava, std::shared_ptr<SecureLink> link) {
    const MacPayload::SummaryAck taken{zprava.summary.id, zprava.summary.revision};
    co_await enqueue({souhrny_.prijmout(std::move(zprava.summary)),
                      std::move(link),
                      {taken},
                      "summary-ack:" + taken.id.text()});
}

Task<void> NotesSync::enqueue(ReceivedRecord received) {
    received_.push_back(std::move(received));
    if (acknowledging_.live() == 0) acknowledging_.spawn(acknowledge());
    // One record that cannot be saved fails the common save of all waiting records. The same number of
    // records is then saved one by one, so that each of the others succeeds when the phone offers it again.
    const bool isAlone = oneByOne_ > 0;
    if (isAlone) --oneByOne_;
    if (isAlone || received_.size() >= mostWaiting) co_await allSettled();
}

Task<void> NotesSync::acknowledge() {
    for (; !received_.empty(); received_.pop_front()) {
        auto& received = received_.front();
        if (!co_await std::move(received.saving))
            ++oneByOne_;
        else if (received.spojeni)
            (void)co_await received.spojeni->poslat(std::move(received.acknowledgement),
                                                    std::move(received.requestID));
    }
}

Task<void> NotesSync::allSettled() {
    poznamky_.hurry();
    souhrny_.hurry();
    co_await acknowledging_.join();
}

void NotesSync::poslatPoznamku(const MorvexNote& note) {
    if (phoneLink_.isPresent()) scope_.spawn(odeslat(note));
}

Task<void> NotesSync::catchUp(std::shared_ptr<SecureLink> link) {
    // Once the phone receives a note from here, it takes it for stored, so all notes are saved first.
    co_await allSettled();
    // Iterates over ids, because notes may change between two sends. Notes that are added meanwhile are sent
    // separately. A note that the phone sends meanwhile is acknowledged when it is saved.
    for (const auto& id : poznamky_.ids()) {
        if (!link || phoneLink_.current() != link) co_return;
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
