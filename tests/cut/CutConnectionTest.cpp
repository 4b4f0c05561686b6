#include "shared/wire/Json.h"
#include "tests/cut/FaultProxy.h"
#include "tests/e2e/Household.h"
#include "tests/support/Effort.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <thread>

namespace morvex {
namespace {

/// What came of all calls.
struct Tally {
    std::size_t calls = 0;
    std::size_t struck = 0;   ///< whose fault happened
    std::size_t answered = 0; ///< that were told to be done
    std::size_t silent = 0;   ///< that happened without the phone knowing

    void add(const Tally& other) {
        calls += other.calls;
        struck += other.struck;
        answered += other.answered;
        silent += other.silent;
    }
};

/// A phone and a computer with a bad line to their relay. Each call of the phone does something that can be
/// counted afterwards.
class BadLine {
  public:
    explicit BadLine(unsigned number) : random_(number) {
        home_.relayAddress = proxy_.address();
        mac_ = home_.startMac();
        home_.pair(*mac_);
        folder_ = home_.allow(*mac_, "Ukázka");
        for (int i = 0; i < 2; ++i) {
            proxy_.arm(FaultProxy::Fault::cut, SIZE_MAX - 1);
            EXPECT_TRUE(call());
            bytesOfACall_ = std::max(bytesOfACall_, proxy_.carried());
        }
    }

    void callWithFaults(std::size_t calls) {
        for (std::size_t i = 0; i < calls; ++i) {
            proxy_.arm(static_cast<FaultProxy::Fault>(random_() % FaultProxy::faults),
                       random_() % bytesOfACall_);
            call();
            if (proxy_.hasStruck()) ++tally_.struck;
        }
        tally_.calls = calls;
    }

    /// Everything that was answered happened, and nothing happened twice.
    Tally look() {
        proxy_.arm(FaultProxy::Fault::cut, SIZE_MAX - 1);
        EXPECT_TRUE(call()) << "the line is good again, but the computer is not back";
        auto times = notes();
        for (const auto& [name, isAnswered] : answers_) {
            auto happened = name.ends_with(".txt") ? fileCount(name) : times[name];
            EXPECT_LE(happened, 1) << name;
            if (isAnswered) EXPECT_EQ(happened, 1) << name;
            tally_.answered += isAnswered ? 1 : 0;
            tally_.silent += happened == 1 && !isAnswered ? 1 : 0;
        }
        return tally_;
    }

  private:
    /// One call, with a name of its own; whether it was answered.
    bool call() {
        const auto number = std::to_string(answers_.size());
        const bool isFile = answers_.size() % 2 == 0;
        const auto name = isFile ? "soubor-" + number + ".txt" : "Poznámka " + number;
        boost::json::object arguments{{isFile ? "path" : "title", name}, {isFile ? "content" : "body", name}};
        auto ended = home_.phone(
            {"--timeout", "4", "call", isFile ? "mac.files.write" : "mac.notes.create", encode(arguments)});
        // Nobody else makes such a name: where it is taken, this very call has taken it before.
        EXPECT_FALSE(ended.output.contains("už existuje")) << name << ended.output;
        EXPECT_NE(ended.code, 1) << ended.output;
        return answers_[name] = ended.code == 0;
    }

    [[nodiscard]] int fileCount(const std::string& name) const {
        std::stringstream content;
        content << std::ifstream(folder_ + "/" + name).rdbuf();
        if (content.str().empty()) return 0;
        EXPECT_EQ(content.str(), name) << "a file that is not whole";
        return 1;
    }

    /// How often there is a note of each title.
    [[nodiscard]] std::map<std::string, int> notes() const {
        std::stringstream text;
        text << std::ifstream(home_.temporary.path() / "mac/.local/share/Morvex/notes-from-iphone.json")
                    .rdbuf();
        std::map<std::string, int> times;
        for (const auto& note : boost::json::parse(text.str()).at("notes").as_array())
            ++times[std::string(note.at("title").as_string())];
        return times;
    }

    Household home_;
    FaultProxy proxy_{home_.relayAddress};
    std::unique_ptr<Program> mac_;
    std::string folder_;
    std::mt19937 random_;
    std::size_t bytesOfACall_ = 0;
    std::map<std::string, bool> answers_;
    Tally tally_;
};

TEST(CutConnection, NoCallHappensTwiceAndEveryAnsweredOneHappened) {
    constexpr unsigned lines = 8;
    const auto callsOfALine = cases(40, 2'000) / lines;
    std::array<Tally, lines> tallies{};
    {
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < lines; ++i)
            threads.emplace_back([i, callsOfALine, &tally = tallies[i]] {
                BadLine line(i);
                line.callWithFaults(callsOfALine);
                tally = line.look();
            });
    }
    Tally all;
    for (const auto& tally : tallies) all.add(tally);
    EXPECT_GT(all.struck, all.calls / 2);
    tell("Cut connections", all.calls,
         std::to_string(all.struck) + " cut, reset, stalled or slowed, " + std::to_string(all.answered) +
             " calls answered, " + std::to_string(all.silent) + " happened without an answer, " +
             (testing::Test::HasFailure() ? "some wrongly" : "none twice, and all that were answered"));
}

} // namespace
} // namespace morvex
