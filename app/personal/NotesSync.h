#pragma once

#include "app/link/PhoneLink.h"
#include "app/personal/PoznamkyStore.h"
#include "app/personal/SouhrnyStore.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"
#include "shared/base/Sentence.h"
#include "shared/wire/MacPayload.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>

namespace morvex {

/// Keeps notes and summaries in step with the phone. It keeps no account of what has arrived: every note goes
/// out again whenever the phone is back, and the revisions of the notes make that harmless. A lost send is
/// never an error here; of a note that no frame can take the person is told once, as the trouble. Main
/// thread; owned by its feature; the companion's `scope` runs the sends. `vyrizeno` is awaited before this
/// object goes.
///
/// Records of the phone that come one after the other are saved together: each is merged at once and waits
/// here, in the order of its coming, for its save and its acknowledgement, while the next ones are taken.
class NotesSync {
  public:
    /// Records that may wait. The phone's next one is taken when all of them are dealt with.
    static constexpr std::size_t mostWaiting = 2048;

    /// What it works with; all of it outlives it.
    struct Services {
        PhoneLink& phone;
        Executor& main;
        TaskScope& scope;
        std::function<void(Sentence)> tellTrouble;
    };

    /// From now on local changes of notes are sent.
    NotesSync(PoznamkyStore& poznamky, SouhrnyStore& souhrny, Services services);

    /// What the phone has written. It is told that a record was taken only when that is so; otherwise it will
    /// offer the record again.
    Task<void> prijmout(MacPayload::NoteUpdate zprava, std::shared_ptr<SecureLink> link);
    Task<void> prijmout(MacPayload::SummaryUpdate zprava, std::shared_ptr<SecureLink> link);

    /// Resumes when every record that came until now is saved and acknowledged, or refused.
    Task<void> vyrizeno();

    /// Sends one note in the background; nothing without a link.
    void poslatPoznamku(const MorvexNote& note);

    /// Sends every note, deleted ones too, one after the other, for as long as this link is the present one.
    Task<void> doplnit(std::shared_ptr<SecureLink> link);

  private:
    struct Prijaty {
        Task<bool> ulozeni;
        std::shared_ptr<SecureLink> spojeni; ///< by which it came
        MacPayload potvrzeni;
        std::string requestID;
    };

    Task<void> zaradit(Prijaty zaznam);
    Task<void> potvrzovat();
    Task<void> odeslat(MorvexNote note);
    void tellTooLong(const MorvexNote& note);

    PoznamkyStore& poznamky_;
    SouhrnyStore& souhrny_;
    PhoneLink& phoneLink_;
    TaskScope& scope_;
    std::function<void(Sentence)> tellTrouble_;
    std::set<std::string> tooLong_; ///< versions of notes that no frame can take; each was told once
    std::deque<Prijaty> prijate_;
    std::size_t poJednom_ = 0; ///< so many records are saved one by one
    TaskScope potvrzovani_;    ///< runs while `prijate_` has something
    Connection noteChanged_;
};

} // namespace morvex
