#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace morvex {

/// Turns the signals that ask the program to end into calls on the main loop. One object a process; it takes
/// the signals over for good.
class UnixSignals {
  public:
    explicit UnixSignals(std::function<void()> onSignal);
    ~UnixSignals();
    UnixSignals(const UnixSignals&) = delete;
    UnixSignals& operator=(const UnixSignals&) = delete;

  private:
    std::function<void()> onSignal_;
    int readEnd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace morvex
