#pragma once

#include "relay/Line.h"
#include "relay/Login.h"
#include "relay/MemoryLedger.h"
#include "shared/wire/RelayMessage.h"

#include <array>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace morvex {

/// Who is connected, and what passes between the two devices of a pair. No network here. Owned by the relay,
/// on its thread; it does not own the lines, and each leaves by `disconnect`, then by `forget`, before it
/// dies.
///
/// Devices answer the news that their peer has come with a hello, and never a hello with a hello. So every
/// login is told to the other device, also one that replaces an older socket, before anything of the newcomer
/// reaches it.
class Switchboard {
  public:
    struct Bounds {
        std::size_t frame;   ///< bytes of one frame
        std::size_t waiting; ///< for one device; above it the frames for it are not read, until half is left
        std::size_t heldInAll; ///< above it the greediest lines are ended
    };

    explicit Switchboard(Bounds bounds) : bounds_(bounds) {}

    /// A device has logged in. An older socket of it is ended.
    void connect(Line& line, Seat seat);
    /// Nothing is heard from the socket any more, whoever ended it. What it still holds is counted.
    void disconnect(Line& line);

    /// The socket is gone and holds nothing.
    void forget(Line& line) { ledger_.leave(line); }

    /// A frame from a connected line. One that is not connected any more is not heard.
    void receive(Line& line, std::string frame);
    /// Some of what waited has left.
    void drained(Line& line);
    /// The line may hold more or less than before. Where all lines together hold too much, the greediest ones
    /// of the site that holds the most are ended, which may be this one.
    void weigh(Line& line);
    /// The line has done what ends it: it hears why, and its peer that it is gone.
    void refuse(Line& line, RelayFailure code);
    /// Both devices hear that the pair is no more.
    void revoke(const PairID& pair);
    /// The pairs of which a device is connected.
    [[nodiscard]] std::vector<PairID> connectedPairs() const;

  private:
    struct Place {
        Seat seat;
        Line* line = nullptr;
        bool isPaused = false;
    };

    Place* placeOf(Line& line);
    Place* peerOf(const Place& place);
    void remove(Place& place);
    void relieve();
    void forward(Place& from, std::string frame);
    /// Lets the line be read, or not, by what waits on account of it.
    void balance(Place& place);
    [[nodiscard]] std::size_t waitingFor(const Place& place);

    Bounds bounds_;
    /// A place without a line is free.
    std::unordered_map<PairID, std::array<Place, 2>> pairs_;
    std::unordered_map<Line*, PairID> connected_;
    MemoryLedger ledger_; ///< of lines that are closing, too
};

} // namespace morvex
