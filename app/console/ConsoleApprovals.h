#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/console/ConsoleOutput.h"

#include <QProperty>

#include <string>

namespace morvex {

/// The action that waits for a decision, on the console. If one request ends and another comes while a
/// decision is being typed, that decision was meant for the first one, so it is ignored. Main thread.
class ConsoleApprovals {
  public:
    enum class Decision { approved, refused };

    /// Both references outlive this object.
    ConsoleApprovals(Schvalovani& schvalovani, const ConsoleOutput& output);

    /// Decides the request that was on screen when the person began to type.
    void decide(Decision decision);

    /// Called after every line: the person who typed it has seen everything printed before.
    void lineTyped();

  private:
    void tell();
    void show(const ApprovalRequest& request) const;
    [[nodiscard]] std::string openID() const;

    Schvalovani& schvalovani_;
    const ConsoleOutput& output_;
    std::string shownID_; ///< id of the first request printed since the last line
    QPropertyNotifier notifier_;
};

} // namespace morvex
