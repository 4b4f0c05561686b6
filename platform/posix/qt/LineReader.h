#pragma once

#include <QSocketNotifier>

#include <functional>
#include <string>

namespace morvex {

/// Reads lines from a descriptor as they come, on the main loop. At the end of the input, or after a line of
/// more than 64 KiB, it just stops.
class LineReader {
  public:
    LineReader(int descriptor, std::function<void(std::string)> onLine);

    /// Whether there is somebody at the other end: not the null device, and not a terminal that this process
    /// shares from the background, where reading would stop it.
    static bool hasInput(int descriptor);

  private:
    void readSome();
    void takeLines();

    int descriptor_;
    std::function<void(std::string)> onLine_;
    QSocketNotifier notifier_;
    std::string pending_;
};

} // namespace morvex
