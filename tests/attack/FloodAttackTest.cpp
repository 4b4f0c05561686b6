#include "shared/wire/Json.h"
#include "tests/attack/AttackedCompanion.h"
#include "tests/support/Effort.h"

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t mebibyte = 1024 * 1024;

/// A relay that sends far too much.
class FloodAttack : public AttackedCompanion {
  protected:
    /// Keeps the companion's main thread busy as long as it exists.
    class Busy {
      public:
        explicit Busy(RealCompanion& mac)
            : thread_([this, &mac] {
                  mac.on([this] {
                      isBusy_.set_value();
                      mayGoOn_.get_future().wait();
                  });
              }) {
            isBusy_.get_future().wait();
        }

        ~Busy() {
            mayGoOn_.set_value();
            thread_.join();
        }

        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

      private:
        std::promise<void> isBusy_;
        std::promise<void> mayGoOn_;
        std::thread thread_;
    };

    /// Sends at most `most` frames while the companion's main thread is busy. If the companion stops reading,
    /// the sender stops, too.
    template <class Send> void floodWhileBusy(HostileRelay::Line& line, std::size_t most, Send send) {
        Busy busy(*mac);
        flood(line, most, send, [this] { mac->turnNetwork(); });
    }

    /// The same while the companion's main thread takes what it is given.
    template <class Send> void flood(HostileRelay::Line& line, std::size_t most, Send send) {
        flood(line, most, send, [this] {
            mac->turnNetwork();
            mac->on([] {});
        });
    }

    /// Waits until the companion has read everything, or takes nothing of what waits for it although its
    /// threads have many turns. One read may bring small frames for a few dozens of them.
    template <class Turn>
    static void waitUntilReadOrHeldBack(HostileRelay::Line& line, const std::atomic<std::size_t>& sent,
                                        std::size_t most, Turn turn) {
        constexpr int manyTurns = 300;
        HostileRelay::Line::Waiting before;
        for (int idle = 0; idle < manyTurns;) {
            const bool isAllSent = sent == most;
            turn();
            const auto waiting = line.waiting();
            if (isAllSent && waiting == HostileRelay::Line::Waiting{}) return;
            idle = (isAllSent || !line.isWritable()) && waiting == before ? idle + 1 : 0;
            before = waiting;
        }
    }

    /// Cuts the connection at the end.
    template <class Send, class Turn>
    void flood(HostileRelay::Line& line, std::size_t most, Send send, Turn turn) {
        std::atomic<std::size_t> sent = 0;
        std::thread sender([&] {
            for (; sent < most; ++sent) send();
        });
        waitUntilReadOrHeldBack(line, sent, most, turn);
        const std::size_t taken = sent;
        line.cut();
        sender.join();
        counted = std::to_string(taken) + " of " + std::to_string(most) + " sent before it held back";
    }
};

TEST_F(FloodAttack, AMessageWithoutEndIsCut) {
    auto line = logIn();
    const std::string piece = HostileRelay::frameHead(0x00, mebibyte) + std::string(mebibyte, 'x');
    line->sendRaw(HostileRelay::frameHead(0x01, mebibyte) + std::string(mebibyte, 'x'));
    std::size_t sent = 0;
    while (line->sendRaw(piece)) ++sent;
    EXPECT_LT(sent, 64U) << "MiB until the companion ended it";
}

TEST_F(FloodAttack, AFrameThatAnnouncesAllBytesThereAreIsCut) {
    for (auto length : {std::uint64_t{1} << 40, std::uint64_t{1} << 62, ~std::uint64_t{0}}) {
        auto line = logIn();
        line->sendRaw(HostileRelay::frameHead(0x81, length));
        line->readToTheEnd();
    }
    tries = 3;
}

TEST_F(FloodAttack, LongTextsForABusyWindowWait) {
    auto line = secure();
    const auto frame =
        encode(RelayMessage{RelayMessage::Failure{RelayFailure::malformed, std::string(mebibyte, 'x')}});
    floodWhileBusy(*line, cases(64, 1024), [&] { line->send(frame); });
}

TEST_F(FloodAttack, TextsOfOneCharacterForABusyWindowWait) {
    auto line = secure();
    std::string character = "a";
    while (character.size() < 3 * mebibyte) character += "\u0301";
    const auto frame = encode(RelayMessage{RelayMessage::Failure{RelayFailure::malformed, character}});
    floodWhileBusy(*line, cases(64, 1024), [&] { line->send(frame); });
}

TEST_F(FloodAttack, LongMessagesOfThePhoneForABusyWindowWait) {
    auto line = secure();
    const MacPayload message{MacPayload::ToolProgress{std::string(2 * mebibyte, 'x')}};
    floodWhileBusy(*line, cases(64, 512), [&] { forward(*line, phone.seal(message)); });
}

TEST_F(FloodAttack, CallsBehindABusyWindowAreAnsweredThoughNoPongWasReadForMinutes) {
    auto line = secure();
    const auto calls = cases(24, 64);
    const MacPayload message{
        MacPayload::ToolCall{"mac.status", R"({"x":")" + std::string(mebibyte, 'x') + "\"}"}};
    auto busy = std::make_unique<Busy>(*mac);
    std::atomic<std::size_t> sent = 0;
    std::thread sender([&] {
        for (; sent < calls; ++sent) forward(*line, phone.seal(message));
    });
    waitUntilReadOrHeldBack(*line, sent, calls, [this] { mac->turnNetwork(); });
    EXPECT_LT(sent, calls);
    for (int i = 0; i < 24; ++i) {
        mac->pass(10s);
        mac->turnNetwork();
    }
    busy.reset();
    sender.join();
    std::size_t answered = 0;
    while (answered < calls && !nextAnswer(*line).empty()) ++answered;
    EXPECT_EQ(answered, calls);
    tries = calls;
    counted = std::to_string(answered) + " calls answered";
}

TEST_F(FloodAttack, FramesBeyondTheLimitArePassedOver) {
    auto line = secure();
    tries = cases(8, 200);
    const std::string frame(frameLimit + 1, ' ');
    for (std::size_t i = 0; i < tries; ++i) line->send(frame);
    EXPECT_TRUE(isServed(*line));
    counted = "served behind them";
}

TEST_F(FloodAttack, ThePeerComesAndGoesWhileTheRelayReadsNothing) {
    auto line = secure();
    const auto here = encode(RelayMessage{RelayMessage::PeerOnline{true}});
    // The companion reads them all and answers each with a hello, which takes its time.
    floodWhileBusy(*line, cases(10'000, 20'000), [&] { line->send(here); });
}

TEST_F(FloodAttack, ThePeerGoesForABusyWindow) {
    auto line = secure();
    const auto gone = encode(RelayMessage{RelayMessage::PeerOnline{false}});
    floodWhileBusy(*line, cases(200'000, 500'000), [&] { line->send(gone); });
}

TEST_F(FloodAttack, PingsWhosePongsNobodyReads) {
    auto line = secure();
    const std::string pings = [] {
        std::string text;
        for (int i = 0; i < 1000; ++i) text += std::string("\x89\x01x", 3);
        return text;
    }();
    flood(*line, cases(300, 10'000), [&] { line->sendRaw(pings); });
}

TEST_F(FloodAttack, HellosThatNobodySigned) {
    auto line = logIn();
    const auto frame = encode(RelayMessage{RelayMessage::Forward{phone.keyExchangeWith("ne")}});
    flood(*line, cases(20'000, 100'000), [&] { line->send(frame); });
}

TEST_F(FloodAttack, MoreOldHellosThanAKeyMeets) {
    std::vector<Envelope> recorded;
    for (int i = 0; i < 1500; ++i) recorded.push_back(phone.newHello());
    auto line = secure();
    for (const auto& hello : recorded) forward(*line, hello);
    counted = std::to_string(recorded.size()) + " hellos";
    forward(*line, writeOf("a.txt"));
    // Each new session begins with a status, which has to be read.
    for (int i = 0; i < 1000; ++i) EXPECT_TRUE(line->receive());
    untilTrouble("Zprávu nejde ověřit: ");
}

TEST_F(FloodAttack, FramesThatAreAllValues) {
    std::string frame = R"({"future":[0)";
    while (frame.size() < frameLimit - 3) frame += ",0";
    frame += "]}";
    memory = std::make_unique<MemoryMeter>();
    tries = 3;
    for (std::size_t i = 0; i < tries; ++i) {
        auto line = logIn();
        line->send(frame);
        line->readToTheEnd();
    }
}

TEST_F(FloodAttack, EnvelopesOfTheLargestSize) {
    auto line = logIn();
    auto envelope = phone.keyExchangeWith(std::string(frameLimit / 16 * 9, 'x'));
    constexpr int envelopes = 8;
    for (int i = 0; i < envelopes; ++i) forward(*line, envelope);
    counted = std::to_string(envelopes) + " envelopes";
    line->say(RelayMessage::PeerOnline{true});
    EXPECT_TRUE(line->receive());
}

} // namespace
} // namespace morvex
