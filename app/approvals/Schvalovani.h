#pragma once

#include "foundation/Clock.h"
#include "foundation/OneShot.h"
#include "foundation/Random.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"
#include "shared/wire/ApprovalRequest.h"

#include <QProperty>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace morvex {

/// The one open question to the user: may this action run? It ends with a decision on this computer, a
/// decision from the phone, an automatic refusal or expiry; whatever goes wrong counts as a refusal. Main
/// thread only.
class Schvalovani {
  public:
    /// `scope` runs the expiry of each request.
    Schvalovani(Clock& clock, Random& random, TaskScope& scope)
        : clock_(clock), random_(random), scope_(scope) {}

    /// Asks the user and resumes with the decision. If another question is open, the answer is immediately
    /// no, and that question stays open. `nadpis` is for the screen, `nahlas` is read aloud, `detail` is the
    /// full content.
    Task<bool> pozadat(std::string nastroj, std::string nadpis, std::string nahlas, std::string detail);

    /// The decision of the person at this computer.
    void rozhodnout(bool schvaleno);

    /// Ends the open request with this decision. Does nothing if none is open.
    void vyresit(bool schvaleno);

    /// Ends the open request if it has this id.
    void vyresit(const std::string& id, bool schvaleno);

    /// The open request, for reading and watching.
    [[nodiscard]] QProperty<std::optional<ApprovalRequest>>& zadost() { return zadost_; }

    /// `slot` gets each request to send to the phone.
    [[nodiscard]] Connection poslatNaTelefon(std::function<void(const ApprovalRequest&)> slot);

  private:
    struct Cekajici {
        ApprovalRequest zadost;
        std::shared_ptr<OneShot<bool>> pokracovani;
    };

    Task<void> expire(std::string id);

    Clock& clock_;
    Random& random_;
    TaskScope& scope_;
    QProperty<std::optional<ApprovalRequest>> zadost_;
    std::optional<Cekajici> cekajici_;
    Signal<ApprovalRequest> naTelefon_;
};

} // namespace morvex
