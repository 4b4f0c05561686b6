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
        flow,    ///< all waiting frames are passed on, and what follows from them, too
        trickle, ///< single frames are passed on
        wait,    ///< time passes, and all frames are passed on
        delay,   ///< time passes, and no frames are passed on
        editOnMac,
        editOnPhone,
        summarize,
        callNote, ///< a tool of the Mac, called by the phone
        callFile,
        callProgram,
        callAgent,
        agentWorks,
        syncOnPhone, ///< by another command of the phone program
        writeOffline,
        holdDisk, ///< stops the Mac's disk, or more often resumes it
        cut,
        loseRelay, ///< the device notices, the relay does not
        stall,
        network, ///< disconnects one device, or more often reconnects it
        loseReply,
        restartRelay,
        restartMac,
        restartPhone,
        crash, ///< of a device: unsaved data are lost, and nobody is notified
        sleep, ///< of the Mac, or more often its wake-up
        skew,  ///< changes a wall clock
        pair,  ///< again; the user at the Mac agrees at a later event
        giveUpPairing,
        unpairOnMac, ///< rare, like the next one
        unpairOnPhone,
        drop, ///< only a faulty relay does this and the following
        duplicate,
        reorder,
        replay,
    };

    Kind kind = Kind::flow;
    unsigned which = 0; ///< selects a wire, a device or a title
    unsigned amount = 0;

    /// Whether it concerns only one connection.
    [[nodiscard]] bool isOfWire() const {
        return kind == Kind::cut || kind == Kind::loseRelay || kind == Kind::stall || kind >= Kind::drop;
    }

    [[nodiscard]] std::string text() const;
};

/// Whether the relay only loses connections, or also frames.
enum class RelayConduct { honest, faulty };

std::vector<ModelEvent> drawEvents(Dice& dice, std::size_t count, RelayConduct conduct);

} // namespace morvex
