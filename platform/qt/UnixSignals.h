#pragma once

#include <QSocketNotifier>

#include <functional>
#include <initializer_list>
#include <memory>

namespace morvex {

/// Turns signals of the system into calls on the main loop. One object a process; it takes the signals over
/// for good.
class UnixSignals {
  public:
    UnixSignals(std::initializer_list<int> signals, std::function<void()> onSignal);
    ~UnixSignals();
    UnixSignals(const UnixSignals&) = delete;
    UnixSignals& operator=(const UnixSignals&) = delete;

  private:
    std::function<void()> onSignal_;
    int readEnd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace morvex
