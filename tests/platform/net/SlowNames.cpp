#include "tests/platform/net/SlowNames.h"

#include "shared/base/Require.h"

#include <chrono>
#include <condition_variable>
#include <dlfcn.h>
#include <mutex>
#include <netdb.h>

namespace morvex {

namespace {

struct Gate {
    std::mutex mutex;
    std::condition_variable changed;
    bool closed = false;
    bool asked = false;

    void pass() {
        std::unique_lock lock(mutex);
        asked = true;
        changed.notify_all();
        changed.wait(lock, [this] { return !closed; });
    }

    void set(bool toClosed) {
        std::lock_guard lock(mutex);
        closed = toClosed;
        asked = asked && !toClosed;
        changed.notify_all();
    }
};

Gate& gate() {
    static Gate only;
    return only;
}

using LookUp = int(const char*, const char*, const addrinfo*, addrinfo**);

} // namespace

SlowName::SlowName() {
    gate().set(true);
}

SlowName::~SlowName() {
    find();
}

void SlowName::waitForLookUp() {
    std::unique_lock lock(gate().mutex);
    require(gate().changed.wait_for(lock, std::chrono::minutes(1), [] { return gate().asked; }),
            "nobody looked up the slow host");
}

void SlowName::find() {
    gate().set(false);
}

} // namespace morvex

// Takes the place of the C library's function in this program.
extern "C" int getaddrinfo(const char* host, const char* port, const addrinfo* hints, addrinfo** found) {
    using namespace morvex;
    static auto* const real = reinterpret_cast<LookUp*>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    const bool isSlow = host && SlowName::host == host;
    if (isSlow) gate().pass();
    return real(isSlow ? "127.0.0.1" : host, port, hints, found);
}
