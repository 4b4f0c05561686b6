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

/// The connected devices, and the forwarding between the two devices of a pair. No networking here. Owned by
/// the relay, on its thread; it does not own the lines. Each line must call `disconnect`, then `forget`,
/// before it is destroyed.
///
/// Devices answer the news that their peer is online with a hello, and never answer a hello with a hello. So
/// every login is reported to the other device, even if it replaces an older socket, before anything of the
/// new connection is forwarded to it.
class Switchboard {
  public:
    struct Bounds {
        std::size_t frame;     ///< bytes of one frame
        std::size_t waiting;   ///< bytes for one device; above it its sender pauses until half is left
        std::size_t heldInAll; ///< bytes; above it the greediest lines are ended
    };

    explicit Switchboard(Bounds bounds) : bounds_(bounds) {}

    /// A device has logged in. An older socket of it is ended.
    void connect(Line& line, Seat seat);
    /// Nothing more is accepted from this line, whoever ended it. The memory that it still holds keeps
    /// counting.
    void disconnect(Line& line);

    /// The socket is gone and holds no memory.
    void forget(Line& line) { ledger_.leave(line); }

    /// A frame from a connected line. Frames of other lines are ignored.
    void receive(Line& line, std::string frame);
    /// Some queued bytes were sent.
    void drained(Line& line);
    /// The memory of the line may have changed. If all lines together hold too much, the greediest ones of
    /// the site that holds the most are ended; this line may be among them.
    void weigh(Line& line);
    /// Ends the line for its own fault: it is told why, and its peer is told that it is offline.
    void refuse(Line& line, RelayFailure code);
    /// Tells both devices that the pair was revoked, and ends their lines.
    void revoke(const PairID& pair);
    /// The pairs that have a connected device.
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
    /// Pauses or resumes reading of the line, depending on the bytes that wait because of it.
    void balance(Place& place);
    [[nodiscard]] std::size_t waitingFor(const Place& place);

    Bounds bounds_;
    /// A place without a line is free.
    std::unordered_map<PairID, std::array<Place, 2>> pairs_;
    std::unordered_map<Line*, PairID> connected_;
    MemoryLedger ledger_; ///< includes closing lines
};

} // namespace morvex
