#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace morvex {

/// So many calls a minute for each address. No network here; owned by the relay.
class RateLimit {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    static constexpr std::size_t maxAddresses = 4096;

    explicit RateLimit(std::size_t perMinute) : perMinute_(perMinute) {}

    /// Counts one call. With more addresses in a minute than it can remember it forgets all of them.
    bool admits(std::string_view address, Moment now);

  private:
    struct Minute {
        Moment start;
        std::size_t calls = 0;
    };

    void makeRoom(Moment now);

    std::size_t perMinute_;
    std::unordered_map<std::string, Minute> minutes_;
};

} // namespace morvex
