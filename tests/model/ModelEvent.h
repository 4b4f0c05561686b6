#pragma once

#include "tests/model/Dice.h"

#include <cstdint>
#include <string>
#include <vector>

namespace morvex {

/// One thing that happens to a phone, a relay and a computer. Its numbers are drawn beforehand, so that a
/// history stays meaningful when events are taken out of it.
struct ModelEvent {
    enum class Kind : std::uint8_t {
        flow,    ///< everything that waits on a wire passes, and what follows from it
        trickle, ///< single frames pass
        wait,    ///< time passes and everything flows
        delay,   ///< time passes and nothing flows
        editOnMac,
        editOnPhone,
        summarize,
        callNote, ///< a tool of the Mac, called by the phone
        callFile,
        callProgram,
        callAgent,
        agentWorks,
        syncOnPhone, ///< by another command of the phone's program
        writeOffline,
        holdDisk, ///< of the Mac; or more often let it work again
        cut,
        loseRelay, ///< the device notices, the relay does not
        stall,
        network, ///< of one device: away, or more often there again
        loseReply,
        restartRelay,
        restartMac,
        restartPhone,
        crash, ///< of a device: what it had not saved is lost, and nobody is told
        sleep, ///< of the Mac; or more often its end
        skew,  ///< another wall clock
        pair,  ///< anew; the person at the Mac agrees at some later event
        giveUpPairing,
        unpairOnMac, ///< seldom, like the next one
        unpairOnPhone,
        drop, ///< this and what follows only a relay does that is at fault
        duplicate,
        reorder,
        replay,
    };

    Kind kind = Kind::flow;
    unsigned which = 0; ///< chooses a wire, a device, a title
    unsigned amount = 0;

    /// Whether one connection alone is concerned.
    [[nodiscard]] bool isOfWire() const {
        return kind == Kind::cut || kind == Kind::loseRelay || kind == Kind::stall || kind >= Kind::drop;
    }

    [[nodiscard]] std::string text() const;
};

/// Whether the relay only loses connections, or frames too.
enum class RelayConduct { honest, faulty };

std::vector<ModelEvent> drawEvents(Dice& dice, std::size_t count, RelayConduct conduct);

} // namespace morvex
