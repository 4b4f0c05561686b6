#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/console/ConsoleOutput.h"

#include <QProperty>

#include <string>

namespace morvex {

/// The action that waits for a decision, on the console. A decision that was typed while one request ended
/// and another came is meant for the first, so it decides nothing. Main thread.
class ConsoleApprovals {
  public:
    enum class Decision { approved, refused };

    /// Both outlive this object.
    ConsoleApprovals(Schvalovani& schvalovani, const ConsoleOutput& output);

    /// Decides the request that was shown to whoever typed this.
    void decide(Decision decision);

    /// After every line: who typed it has seen all that was printed before.
    void lineTyped();

  private:
    void tell();
    void show(const ApprovalRequest& request) const;
    [[nodiscard]] std::string openID() const;

    Schvalovani& schvalovani_;
    const ConsoleOutput& output_;
    std::string shownID_; ///< of the first request that was printed since the last line
    QPropertyNotifier notifier_;
};

} // namespace morvex
