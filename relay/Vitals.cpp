#include "relay/Vitals.h"

#include <algorithm>

namespace morvex {

Vitals::Verdict Vitals::judge(const Signs& signs, Moment now) {
    note(signs, now);
    if (signs.stage == Stage::closing)
        return now - stageSince_ > limits_.closing ? Verdict::lingering : Verdict::well;
    if (signs.stage == Stage::loggingIn)
        return now - stageSince_ > limits_.login ? Verdict::late : Verdict::well;
    if (now - tookAt_ > limits_.stall) return Verdict::stalled;
    if (now - frameSince_ > limits_.wholeFrame) return Verdict::unfinished;
    if (now - heardAt_ > limits_.silence) return Verdict::dead;
    if (now - std::max(heardAt_, pingedAt_) < limits_.pingAfter) return Verdict::well;
    pingedAt_ = now;
    return Verdict::ping;
}

void Vitals::note(const Signs& signs, Moment now) {
    // A state seen at the previous check may have lasted until now.
    const bool couldNotBeHeard = signs.isReadingPaused || last_.isReadingPaused;
    const bool hadNothingToTake = signs.waiting == 0 || last_.waiting == 0;
    if (signs.stage != last_.stage) stageSince_ = now;
    if (signs.bytesRead != last_.bytesRead || couldNotBeHeard) heardAt_ = now;
    if (signs.bytesWritten != last_.bytesWritten || hadNothingToTake) tookAt_ = now;
    const bool isSameFrame =
        signs.isWithinFrame && last_.isWithinFrame && signs.framesRead == last_.framesRead;
    if (!isSameFrame) frameSince_ = now;
    last_ = signs;
}

} // namespace morvex
