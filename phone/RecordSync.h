#pragma once

#include "phone/Inbox.h"
#include "phone/PhoneRecords.h"
#include "phone/PhoneSession.h"
#include "phone/Terminal.h"

#include <set>
#include <vector>

namespace morvex {

/// Keeps the phone's records in step with the Mac while a session runs: offers what the Mac has not confirmed
/// whenever the session stands anew, takes and acknowledges the Mac's notes, and hears its acknowledgements.
/// The Mac answers in order, so the first result of a tool shows that it has told of all its notes: once a
/// session, what it turned out to lack or did not take is then offered again. A result that a call of an
/// earlier session still gets may come too soon: then more is offered than is lacking, which is harmless.
/// Owned by the attendant; lives on the phone's executor.
class RecordSync {
  public:
    RecordSync(PhoneRecords& records, PhoneSession& session, Terminal& terminal)
        : records_(records), session_(session), terminal_(terminal) {}

    Task<void> heard(const Inbox::Event& event);

    /// Sends everything that the Mac has not confirmed.
    Task<void> offer();

    /// From now on what comes is kept in memory, until `release` saves it at once and acknowledges it. After
    /// a release that failed the next save is tried with whatever comes.
    void hold() { isHeld_ = true; }

    Task<Result<void>> release();

  private:
    Task<void> begin();
    Task<void> caughtUp();
    Task<void> take(MorvexNote note);
    Task<void> acknowledge(MacPayload::NoteAck taken);
    void confirm(const Uuid& id, std::uint64_t revision);
    /// Saves news, or leaves that to `release`. False when it could not be saved.
    bool keep(bool isNews);

    PhoneRecords& records_;
    PhoneSession& session_;
    Terminal& terminal_;
    std::vector<MacPayload::NoteAck> waiting_; ///< acknowledgements of what is not saved yet
    std::set<Uuid> told_;                      ///< what the Mac told of or acknowledged in this session
    bool isCaughtUp_ = false;
    bool isHeld_ = false;
    bool isUnsaved_ = false;
};

} // namespace morvex
