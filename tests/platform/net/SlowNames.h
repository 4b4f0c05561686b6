#pragma once

#include <string>

namespace morvex {

/// Holds up the look-up of the host `host` until `find`: from then on it is this computer. This program's
/// `getaddrinfo` asks here first; other hosts are looked up as always. One at a time; any thread.
class SlowName {
  public:
    inline static const std::string host = "slow.example";

    SlowName();
    ~SlowName();
    SlowName(const SlowName&) = delete;
    SlowName& operator=(const SlowName&) = delete;

    /// Returns once a look-up is under way.
    void waitForLookUp();

    void find();
};

} // namespace morvex
