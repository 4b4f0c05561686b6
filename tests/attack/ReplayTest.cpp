#include "tests/attack/CraftedSender.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Duvod = SecureChannel::Chyba::Duvod;

const Date now = dateFromSeconds(1'795'000'000);
constexpr auto largest = std::numeric_limits<std::uint64_t>::max();

enum class Verdict { accepted, foreign, late, replayed, unverifiable };

Verdict verdictOf(const Result<Bytes>& opened) {
    if (opened) return Verdict::accepted;
    const auto* chyba = opened.error().as<SecureChannel::Chyba>();
    if (!chyba) return Verdict::unverifiable;
    switch (chyba->duvod) {
    case Duvod::cizi:
        return Verdict::foreign;
    case Duvod::prehrani:
        return Verdict::replayed;
    case Duvod::prosla:
        return Verdict::late;
    case Duvod::neoveritelna:
        return Verdict::unverifiable;
    }
    std::unreachable();
}

struct Step {
    std::uint64_t counter;
    bool accepted;
};

/// The counters of one direction in the order of their arrival. There is no window for reordering: what a
/// window would still take is refused.
const std::vector<std::pair<const char*, std::vector<Step>>> scripts{
    {"zero is no counter", {{0, false}, {1, true}, {0, false}, {1, false}, {2, true}}},
    {"in order", {{1, true}, {2, true}, {3, true}, {4, true}, {4, false}, {3, false}}},
    {"a jump and what it passed",
     {{1, true}, {9, true}, {8, false}, {7, false}, {7, false}, {6, false}, {10, true}, {9, false}}},
    {"as far ahead as a window of 8192 would reach",
     {{8192, true}, {1, false}, {8191, false}, {8192, false}, {8193, true}, {8193, false}, {2, false}}},
    {"backwards", {{64, true}, {63, false}, {62, false}, {32, false}, {2, false}, {1, false}, {65, true}}},
    {"every second one, then those between",
     {{2, true}, {4, true}, {6, true}, {1, false}, {3, false}, {5, false}, {7, true}}},
    {"over 2^32",
     {{0xffff'ffff, true}, {0x1'0000'0000, true}, {0xffff'ffff, false}, {0, false}, {0x1'0000'0001, true}}},
    {"over 2^63", {{0x7fff'ffff'ffff'ffff, true}, {0x8000'0000'0000'0000, true}, {1, false}}},
    {"to the ceiling",
     {{largest - 1, true}, {largest - 2, false}, {largest, true}, {largest, false}, {0, false}, {1, false}}},
    {"straight to the ceiling",
     {{largest, true}, {largest, false}, {0, false}, {1, false}, {largest, false}}},
};

TEST(Replay, CountersMustRise) {
    std::size_t count = 0;
    for (const auto& [what, script] : scripts) {
        CraftedSender sender;
        auto receiver = sender.receiver();
        for (const auto& step : script) {
            const auto envelope = sender.seal(step.counter, "id-" + std::to_string(++count), now);
            EXPECT_EQ(verdictOf(receiver.open(envelope, now)),
                      step.accepted ? Verdict::accepted : Verdict::replayed)
                << what << ": " << step.counter;
        }
    }
    tell("scripted orders of counters", scripts.size(),
         std::to_string(count) + " steps, each accepted or refused as it must");
}

TEST(Replay, AForgedCeilingDoesNotShutTheGenuineMessagesOut) {
    CraftedSender sender;
    auto receiver = sender.receiver();
    auto forged = sender.seal(5, "a", now);
    forged.counter = largest;
    EXPECT_EQ(verdictOf(receiver.open(forged, now)), Verdict::unverifiable);
    EXPECT_EQ(verdictOf(receiver.open(sender.seal(1, "a", now), now)), Verdict::accepted);
    tell("a forged ceiling of the counter", 1, "refused, the genuine message behind it accepted");
}

TEST(Replay, IdentitiesOfAnyLengthTakeNoRoom) {
    const CraftedSender sender;
    auto receiver = sender.receiver();
    constexpr std::uint64_t envelopes = 512;
    const MemoryMeter memory;
    for (std::uint64_t counter = 1; counter <= envelopes; ++counter) {
        const auto identity = std::to_string(counter) + std::string(500'000, 'x');
        EXPECT_EQ(verdictOf(receiver.open(sender.seal(counter, identity, now), now)), Verdict::accepted);
        EXPECT_EQ(verdictOf(receiver.open(sender.seal(counter + 1, identity, now), now)), Verdict::replayed);
    }
    tell("Identities of half a megabyte", envelopes, "each known again, " + expectLittleMemory(memory));
}

TEST(ReplayDeathTest, TheSenderEndsBeforeItsCounterStartsAgain) {
    OutgoingCounter counter(largest - 1);
    EXPECT_EQ(counter.next(), largest);
    EXPECT_DEATH(counter.next(), "counter");
    tell("a counter at its end", 1, "the sender ends");
}

/// The rules in their slowest form: identities are searched one by one.
class NaiveReceiver {
  public:
    Verdict open(const Envelope& envelope, Date when, bool isForged) {
        if (envelope.pair != PairID{"PAIR"} || envelope.from != DeviceID{"MAC"} ||
            envelope.to != DeviceID{"PHONE"})
            return Verdict::foreign;
        if (when > envelope.expiresAt + 30s || when < envelope.createdAt - 30s) return Verdict::late;
        if (envelope.counter <= last_) return Verdict::replayed;
        if (std::ranges::find(seen_, envelope.msgID) != seen_.end()) return Verdict::replayed;
        if (isForged) return Verdict::unverifiable;
        last_ = envelope.counter;
        seen_.push_back(envelope.msgID);
        if (seen_.size() > 512) seen_.erase(seen_.begin());
        return Verdict::accepted;
    }

    [[nodiscard]] std::uint64_t last() const { return last_; }

  private:
    std::uint64_t last_ = 0;
    std::vector<std::string> seen_;
};

/// Draws what arrives next: new messages, repeated ones, and everything that a relay can do to them.
class RandomArrivals {
  public:
    struct Arrival {
        Envelope envelope;
        Date when;
        bool isForged;
    };

    explicit RandomArrivals(std::uint64_t seed)
        : random_(seed), length_(chance(99) ? 1 + below(20) : 1000), begin_(chance(5) ? largest - 10 : 0) {}

    /// Mostly a short sequence, some that are longer than the window of identities.
    [[nodiscard]] std::size_t length() const { return length_; }

    Arrival next(const CraftedSender& sender, std::uint64_t last) {
        Arrival arrival{kept_.empty() || chance(60) ? fresh(sender, last) : kept_[below(kept_.size())],
                        now + std::chrono::seconds(below(12)), false};
        if (chance(5)) arrival.when += std::chrono::seconds(below(140)) - 50s;
        if (chance(2)) forge(arrival);
        if (chance(1)) redirect(arrival.envelope);
        return arrival;
    }

  private:
    Envelope fresh(const CraftedSender& sender, std::uint64_t last) {
        // Usually close to the last counter, sometimes behind it, sometimes with an identity used before.
        const auto step = below(8);
        last = std::max(last, begin_);
        const auto counter = last + step < 3 ? step : last + step - 3;
        const auto id = chance(10) ? identities_ - std::min(identities_, below(700)) : ++identities_;
        auto envelope = sender.seal(counter, std::to_string(id), now);
        if (kept_.size() < 700)
            kept_.push_back(envelope);
        else
            kept_[below(kept_.size())] = envelope;
        return envelope;
    }

    void forge(Arrival& arrival) {
        arrival.isForged = true;
        auto& envelope = arrival.envelope;
        switch (below(8)) {
        case 0:
            ++envelope.counter;
            return;
        case 1:
            envelope.msgID += "x";
            return;
        case 2:
            envelope.requestID += "x";
            return;
        case 3:
            envelope.nonce[below(nonceSize)] ^= 1;
            return;
        case 4:
            envelope.nonce.resize(below(2 * nonceSize));
            if (envelope.nonce.size() == nonceSize) envelope.nonce.pop_back();
            return;
        case 5:
            envelope.tag.resize(below(tagSize));
            return;
        case 6:
            envelope.createdAt -= std::chrono::seconds(1 + below(100));
            return;
        default:
            envelope.tag[below(tagSize)] ^= 1;
        }
    }

    void redirect(Envelope& envelope) {
        switch (below(3)) {
        case 0:
            envelope.pair = {"ELSE"};
            return;
        case 1:
            std::swap(envelope.from, envelope.to);
            return;
        default:
            envelope.to = {"ELSE"};
        }
    }

    std::uint64_t below(std::uint64_t bound) { return random_() % bound; }

    bool chance(std::uint64_t percent) { return below(100) < percent; }

    std::mt19937_64 random_;
    std::size_t length_;
    std::uint64_t begin_; ///< of the counters; sometimes close to the largest possible one
    std::uint64_t identities_ = 0;
    std::vector<Envelope> kept_;
};

TEST(Replay, RandomSequencesAreJudgedAsByTheNaiveModel) {
    const auto total = cases(5'000, 1'000'000);
    const auto first = seed(0);
    const CraftedSender sender;
    std::array<std::size_t, 5> counts{};
    for (std::size_t sequence = 0; sequence < total && !HasFailure(); ++sequence) {
        auto receiver = sender.receiver();
        NaiveReceiver model;
        RandomArrivals arrivals(first + sequence);
        for (std::size_t i = 0; i < arrivals.length(); ++i) {
            const auto [envelope, when, isForged] = arrivals.next(sender, model.last());
            const auto expected = model.open(envelope, when, isForged);
            EXPECT_EQ(verdictOf(receiver.open(envelope, when)), expected)
                << "MORVEX_SEED=" << first + sequence << ", arrival " << i;
            ++counts[static_cast<std::size_t>(expected)];
        }
    }
    const auto all = std::reduce(counts.begin(), counts.end());
    for (auto count : counts) EXPECT_GT(count, all / 1000);
    tell("random sequences against a naive model", total,
         std::to_string(counts[0]) + " of " + std::to_string(all) + " arrivals accepted, all alike, seed " +
             std::to_string(first));
}

} // namespace
} // namespace morvex
