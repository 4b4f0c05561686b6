#include "shared/wire/Json.h"
#include "tests/cut/FaultProxy.h"
#include "tests/support/Effort.h"
#include "tests/support/Household.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <array>
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
    std::array<std::size_t, FaultProxy::faults> struck{}; ///< whose fault happened, by its kind
    std::size_t answered = 0;                             ///< that were told to be done
    std::size_t silent = 0;                               ///< that happened without the phone knowing

    void add(const Tally& other) {
        calls += other.calls;
        for (std::size_t kind = 0; kind < struck.size(); ++kind) struck[kind] += other.struck[kind];
        answered += other.answered;
        silent += other.silent;
    }

    [[nodiscard]] std::size_t of(FaultProxy::Fault fault) const {
        return struck[static_cast<std::size_t>(fault)];
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
            EXPECT_TRUE(call(patient));
            bytesOfACall_ = std::max(bytesOfACall_, proxy_.carried());
        }
    }

    /// Calls until so many connections were cut, or many times as often. Every second fault is a cut.
    void callUntilCut(std::size_t times) {
        using enum FaultProxy::Fault;
        for (; tally_.of(cut) < times && tally_.calls < 10 * times; ++tally_.calls) {
            const auto kind =
                random_() % 2 == 0 ? static_cast<std::size_t>(cut) : random_() % FaultProxy::faults;
            proxy_.arm(static_cast<FaultProxy::Fault>(kind), random_() % bytesOfACall_);
            call();
            if (proxy_.hasStruck()) ++tally_.struck[kind];
        }
    }

    /// Everything that was answered happened, and nothing happened twice.
    Tally look() {
        proxy_.arm(FaultProxy::Fault::cut, SIZE_MAX - 1);
        EXPECT_TRUE(call(patient)) << "the line is good again, but the computer is not back";
        tally_.calls = answers_.size();
        auto times = notes();
        times.merge(programs());
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
    /// A tool whose effect can be counted, called in a way that leaves a name of its own.
    struct Deed {
        std::string name;
        std::string tool;
        boost::json::object arguments;
    };

    [[nodiscard]] static Deed deed(std::size_t number) {
        const auto text = std::to_string(number);
        if (number % 3 == 0) {
            const auto name = "soubor-" + text + ".txt";
            return {name, "mac.files.write", {{"path", name}, {"content", name}}};
        }
        const auto name = (number % 3 == 1 ? "Poznámka " : "program-") + text;
        if (number % 3 == 1) return {name, "mac.notes.create", {{"title", name}, {"body", name}}};
        // Nothing but the link hinders this one from happening twice.
        boost::json::array args{"-c", "open('log', 'a').write('" + name + "\\n')"};
        return {name, "mac.terminal.run", {{"program", "python3"}, {"args", std::move(args)}}};
    }

    /// Seconds for a call on a good line, also where others use the computer.
    static constexpr const char* patient = "30";

    /// One call, with a name of its own; whether it was answered.
    bool call(const char* seconds = "4") {
        const auto [name, tool, arguments] = deed(answers_.size());
        auto ended = home_.phone({"--timeout", seconds, "call", tool, encode(arguments)});
        // Nobody else makes such a name: where it is taken, this very call has taken it before.
        EXPECT_FALSE(ended.output.contains("už existuje")) << name << ended.output;
        EXPECT_NE(ended.code, 1) << ended.output;
        return answers_[name] = ended.code == 0;
    }

    /// How often each program has appended its name.
    [[nodiscard]] std::map<std::string, int> programs() const {
        std::map<std::string, int> times;
        std::ifstream log(folder_ + "/log");
        for (std::string name; std::getline(log, name);) ++times[name];
        return times;
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
    const auto cutsOfALine = cases(16, 2'000) / lines;
    std::array<Tally, lines> tallies{};
    {
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < lines; ++i)
            threads.emplace_back([i, cutsOfALine, &tally = tallies[i]] {
                BadLine line(i);
                line.callUntilCut(cutsOfALine);
                tally = line.look();
            });
    }
    Tally all;
    for (const auto& tally : tallies) all.add(tally);
    using enum FaultProxy::Fault;
    EXPECT_GE(all.of(cut), cutsOfALine * lines);
    if (isLongRun()) EXPECT_GT(all.silent, 0U) << "no call was lost between its effect and its answer";
    std::ostringstream what;
    what << all.of(cut) << " cut, " << all.of(reset) << " reset, " << all.of(halfClosed)
         << " ended on one side, " << all.of(stalled) << " stalled; besides " << all.of(sliced) << " sliced, "
         << all.of(slowed) << " slowed and " << all.of(repeated) << " with a frame twice; of " << all.calls
         << " calls " << all.answered << " answered, " << all.silent << " happened without an answer, "
         << (testing::Test::HasFailure() ? "some wrongly" : "none twice, and all that were answered");
    tell("Cut connections", all.of(cut), what.str());
}

} // namespace
} // namespace morvex
