#include "foundation/Clock.h"

#include "foundation/OneShot.h"

#include <memory>

namespace morvex {

Task<bool> sleepFor(Clock& clock, Clock::Duration duration, std::stop_token stop) {
    auto shot = std::make_shared<OneShot<bool>>();
    auto timer = clock.at(clock.sinceBoot() + duration, [shot] { shot->answer(true); });
    bool elapsed = false;
    {
        std::stop_callback interrupt(stop, [shot] { shot->answer(false); });
        elapsed = co_await shot->wait();
    }
    clock.forget(timer);
    co_return elapsed && !stop.stop_requested();
}

} // namespace morvex
