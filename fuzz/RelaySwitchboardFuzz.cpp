#include "relay/FailureFrame.h"
#include "relay/Switchboard.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

using namespace morvex;

namespace {

/// Longer games take more time and reveal no more than short ones.
constexpr int mostMoves = 32;

constexpr Switchboard::Bounds bounds{.frame = 4096, .waiting = 2000, .heldInAll = 3000};

const DeviceID macID{"MAC"};
const DeviceID phoneID{"PHONE"};
const PairID pairID{"PAIR"};

std::string makeFrame(bool isFromMac) {
    Envelope envelope;
    envelope.v = ProtocolVersion::current;
    envelope.pair = pairID;
    envelope.from = isFromMac ? macID : phoneID;
    envelope.to = isFromMac ? phoneID : macID;
    return encode(RelayMessage{RelayMessage::Forward{std::move(envelope)}});
}

/// The genuine frames of the phone and of the computer, created once.
const std::array<std::string, 2> forwarded{makeFrame(false), makeFrame(true)};

/// A socket that checks the calls of the switchboard.
struct CheckingLine final : Line {
    std::size_t bytes = 0;
    bool isConnected = false;
    bool isPaused = false;
    bool isEnded = false;
    bool isPeerOnline = false;

    void deliver(std::string frame) override {
        require(!isEnded, "an ended line gets nothing");
        bytes += frame.size();
        if (std::ranges::find(forwarded, frame) == forwarded.end()) return hear(frame);
        require(isPeerOnline, "presence comes before its frames");
    }

    [[nodiscard]] std::size_t waiting() const override { return bytes; }

    [[nodiscard]] std::size_t held() const override { return bytes; }

    [[nodiscard]] Prefix site() const override { return {}; }

    void pauseReading() override { isPaused = true; }

    void resumeReading() override { isPaused = false; }

    void end(Ending) override {
        bytes = 0;
        isEnded = true;
    }

  private:
    void hear(std::string_view frame) {
        const auto message = decode<RelayMessage>(frame).value();
        if (const auto* welcome = message.as<RelayMessage::Authenticated>())
            isPeerOnline = welcome->peerOnline;
        if (const auto* presence = message.as<RelayMessage::PeerOnline>()) isPeerOnline = presence->isOnline;
        if (message.as<RelayMessage::Forward>()) require(isPeerOnline, "presence comes before its frames");
    }
};

/// Two devices with two sockets each, moved by the input byte by byte.
class Game {
  public:
    void play(std::string_view input) {
        for (int moves = 0; moves < mostMoves && !input.empty(); ++moves) {
            const auto move = static_cast<std::uint8_t>(input.front());
            input.remove_prefix(1);
            if (move == 0xFF) return receive(lines_[0], std::string{input});
            step(lines_[move & 3U], (move & 1U) == 0, move >> 2U);
        }
    }

  private:
    void step(CheckingLine& line, bool isMac, unsigned move) {
        switch (move % 6) {
        case 0:
            return connect(line, isMac);
        case 1:
            return disconnect(line);
        case 2:
            return receive(line, forwarded[isMac ? 1 : 0]);
        case 3:
            return drain(line);
        case 4:
            return weigh(line);
        case 5:
            return move > 48 ? board_.revoke(pairID) : receive(line, "nonsense");
        }
    }

    void connect(CheckingLine& line, bool isMac) {
        disconnect(line);
        line.isConnected = true;
        board_.connect(line, {pairID, isMac ? macID : phoneID, isMac ? phoneID : macID});
    }

    void disconnect(CheckingLine& line) {
        board_.disconnect(line);
        board_.forget(line);
        line = {};
    }

    void receive(CheckingLine& line, std::string frame) {
        if (line.isPaused || line.isEnded) return;
        if (line.isConnected)
            require(growing(line).bytes <= bounds.waiting, "a line over the bound stops the reading");
        board_.receive(line, std::move(frame));
        expectLittleHeld();
    }

    void weigh(CheckingLine& line) {
        board_.weigh(line);
        expectLittleHeld();
    }

    void expectLittleHeld() const {
        std::size_t held = 0;
        for (const auto& line : lines_)
            if (line.isConnected && !line.isEnded) held += line.bytes;
        require(held <= bounds.heldInAll, "all lines hold more than they may together");
    }

    /// The line whose queue grows when this one sends: the peer's, or its own if there is no peer.
    const CheckingLine& growing(const CheckingLine& line) const {
        for (const auto& other : lines_)
            if (&other != &line && other.isConnected && !other.isEnded) return other;
        return line;
    }

    void drain(CheckingLine& line) {
        line.bytes /= 4;
        board_.drained(line);
    }

    std::array<CheckingLine, 4> lines_;
    Switchboard board_{bounds};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Game{}.play(asText({data, size}));
    return 0;
}
