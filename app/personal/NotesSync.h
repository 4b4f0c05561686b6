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

/// Keeps notes and summaries in step with the phone. It does not track what has arrived: every note is sent
/// again whenever the phone reconnects, and the revisions of the notes make that harmless. A lost send is
/// never an error here; if a note exceeds the frame limit, the user is told once. Main thread; owned by its
/// feature; the companion's `scope` runs the sends. `allSettled` must be awaited before this object is
/// destroyed.
///
/// Records that the phone sends in quick succession are saved together: each is merged at once and waits
/// here, in the order of arrival, for its save and its acknowledgement, while the next ones are read.
class NotesSync {
  public:
    /// At most this many records wait; the next one is read after all of them are processed.
    static constexpr std::size_t mostWaiting = 2048;

    /// All references outlive the `NotesSync`.
    struct Services {
        PhoneLink& phone;
        Executor& main;
        TaskScope& scope;
        std::function<void(Sentence)> tellTrouble;
    };

    /// From the construction on, local changes of notes are sent.
    NotesSync(PoznamkyStore& poznamky, SouhrnyStore& souhrny, Services services);

    /// Takes a record that the phone has written. The record is acknowledged only when it has been saved;
    /// otherwise the phone will offer it again.
    Task<void> prijmout(MacPayload::NoteUpdate zprava, std::shared_ptr<SecureLink> link);
    Task<void> prijmout(MacPayload::SummaryUpdate zprava, std::shared_ptr<SecureLink> link);

    /// Resumes when every record that has arrived so far is saved and acknowledged, or refused.
    Task<void> allSettled();

    /// Sends one note in the background. Does nothing without a link.
    void poslatPoznamku(const MorvexNote& note);

    /// Sends every note, including deleted ones, one after the other, as long as this link is the current
    /// one.
    Task<void> catchUp(std::shared_ptr<SecureLink> link);

  private:
    struct ReceivedRecord {
        Task<bool> saving;
        std::shared_ptr<SecureLink> spojeni; ///< the link it came by
        MacPayload acknowledgement;
        std::string requestID;
    };

    Task<void> enqueue(ReceivedRecord received);
    Task<void> acknowledge();
    Task<void> odeslat(MorvexNote note);
    void tellTooLong(const MorvexNote& note);

    PoznamkyStore& poznamky_;
    SouhrnyStore& souhrny_;
    PhoneLink& phoneLink_;
    TaskScope& scope_;
    std::function<void(Sentence)> tellTrouble_;
    std::set<std::string> tooLong_; ///< versions of notes that exceed the frame limit and were reported
    std::deque<ReceivedRecord> received_;
    std::size_t oneByOne_ = 0; ///< how many of the next records are saved one by one
    TaskScope acknowledging_;  ///< runs while `received_` is not empty
    Connection noteChanged_;
};

} // namespace morvex
