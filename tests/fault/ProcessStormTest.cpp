#include "tests/fault/MarkedProcesses.h"
#include "tests/fault/Orphans.h"
#include "tests/fault/TroubledRun.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <random>
#include <set>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Ends = DifficultChild::Ends;

/// The variable that tells from which run a process descends.
constexpr auto runMark = "MORVEX_TEST_RUN";

std::size_t openDescriptors() {
    auto all = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

/// How many runs ended in which way; a run may count more than once.
struct Endings {
    std::size_t asked = 0;
    std::size_t cancelled = 0;
    std::size_t outOfTime = 0;
    std::size_t killed = 0;
    std::size_t neverBegan = 0;
    std::map<std::string, std::size_t> byThemselves; ///< by kind

    void count(const TroubledRun& run) {
        if (run.wasAsked()) ++asked;
        if (run.wasCancelled()) ++cancelled;
        if (run.wasOutOfTime()) ++outOfTime;
        if (run.wasKilled()) ++killed;
        if (run.neverBegan()) ++neverBegan;
        if (run.endedByItself()) ++byThemselves[run.child().what];
    }

    [[nodiscard]] std::string told() const {
        std::size_t all = 0;
        for (const auto& [kind, count] : byThemselves) all += count;
        return std::to_string(all) + " ended by themselves, " + std::to_string(asked) +
               " were asked to end, " + std::to_string(cancelled) + " cancelled, " +
               std::to_string(outOfTime) + " reached the limit, " + std::to_string(killed) +
               " were killed, " + std::to_string(neverBegan) + " never began";
    }
};

/// Runs of difficult children, many at once. Create it inside `succeedsAboveOrphans`, before the first thread
/// is started.
class ProcessStorm {
  public:
    ProcessStorm() {
        std::ranges::shuffle(all_.children, random_);
        std::ranges::copy_if(all_.children, std::back_inserter(ending_.children),
                             [](const auto& child) { return child.ends != Ends::whenStopped; });
    }

    void rage() {
        const auto total = cases(200, 2'000);
        for (bool isCalm = false; begun_ < total; isCalm = !isCalm)
            isCalm ? round(ending_, &ProcessStorm::waitForTheEnd)
                   : round(all_, &ProcessStorm::troubleUntilTheEnd);
        EXPECT_GE(all_.children.size(), 30U);
        for (const auto& child : ending_.children)
            if (child.ends == Ends::byItself) EXPECT_GT(endings_.byThemselves[child.what], 0U) << child.what;
        tell("Process runner", begun_,
             std::to_string(all_.children.size()) + " kinds of children; " + endings_.told() + "; " +
                 std::to_string(daemons_.size()) + " daemons of stopped runs lived on and what " +
                 std::to_string(left_.size()) +
                 " runs left that ended by themselves or were asked to, of the others nothing");
    }

  private:
    /// The children in turn.
    struct Kinds {
        const DifficultChild& next() { return children[turn++ % children.size()]; }

        std::vector<DifficultChild> children;
        std::size_t turn = 0;
    };

    using Runs = std::vector<std::unique_ptr<TroubledRun>>;
    using Passing = void (ProcessStorm::*)(const Runs&);

    Runs begin(Kinds& kinds) {
        Runs runs;
        const std::size_t count = 1 + random_() % 6;
        for (std::size_t i = 0; i < count; ++i) {
            auto child = kinds.next();
            child.program.env[runMark] = std::to_string(begun_++);
            runs.push_back(std::make_unique<TroubledRun>(programs_, child));
        }
        return runs;
    }

    static bool isAnyRunning(const Runs& runs) {
        return std::ranges::any_of(runs, [](const auto& run) { return !run->hasEnded(); });
    }

    /// Waits without disturbing the runs. Time passes only for runs that have ended but whose output is still
    /// held by others.
    void waitForTheEnd(const Runs& runs) {
        while (isAnyRunning(runs))
            if (auto wait = programs_.clock.untilNext(); wait && *wait <= 2s) programs_.clock.advance(*wait);
    }

    /// Cancels, asks to end, waits or lets time pass, in random order.
    void troubleUntilTheEnd(const Runs& runs) {
        while (isAnyRunning(runs)) trouble(*runs[random_() % runs.size()]);
    }

    void trouble(TroubledRun& run) {
        switch (random_() % 12) {
        case 0:
        case 1:
            return run.cancel();
        case 2:
            return std::thread([&run] { run.cancel(); }).join();
        case 3:
        case 4:
            return run.askToEnd();
        case 5:
            return programs_.clock.advance(RealPrograms::limit);
        case 6:
            return programs_.clock.advance(1s);
        case 7:
            return programs_.clock.advance(4s);
        default:
            std::this_thread::yield();
        }
    }

    void round(Kinds& kinds, Passing pass) {
        auto runs = begin(kinds);
        (this->*pass)(runs);
        for (auto& run : runs) {
            run->expectItsEnd();
            endings_.count(*run);
        }
        programs_.clock.advance(4s);
        settle();
        expectNothingLeft(runs);
        for (const auto& run : runs) run->expectNoLateCallback();
    }

    /// Waits until the executor has finished the remaining jobs of the runs.
    void settle() {
        std::promise<void> done;
        programs_.home.post([&done] { done.set_value(); });
        done.get_future().get();
        EXPECT_EQ(programs_.clock.waiting(), 0U);
    }

    /// Processes that may live on are ended here.
    void expectNothingLeft(const Runs& runs) {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        for (auto left = living(); !left.empty(); left = living()) {
            const bool isLate = std::chrono::steady_clock::now() > deadline;
            for (const auto& [process, mark] : left) judge(process, mark, runs, isLate);
            std::this_thread::yield();
        }
        EXPECT_EQ(ownChildren(), childrenAtFirst_) << "a zombie, or a child that nobody looks after";
        EXPECT_EQ(openDescriptors(), descriptors_);
    }

    /// All processes that descend from runs, with their mark if they have one.
    static std::map<pid_t, std::string> living() {
        auto all = processesMarked(runMark);
        for (auto orphan : livingOrphans()) all.try_emplace(orphan, "");
        return all;
    }

    void judge(pid_t process, const std::string& mark, const Runs& runs, bool isLate) {
        auto owner = std::ranges::find_if(runs, [&mark](const auto& run) { return mayOwn(*run, mark); });
        if (owner != runs.end()) {
            const bool isDaemon = (*owner)->wasStopped() && !(*owner)->wasAsked();
            auto& excused = isDaemon ? daemons_ : left_;
            excused.insert((*owner)->child().program.env.at(runMark));
        } else if (isLate) {
            ADD_FAILURE() << "left behind by: " << names(runs, mark);
        } else {
            return;
        }
        ::kill(process, SIGKILL);
    }

    static bool mayOwn(const TroubledRun& run, const std::string& mark) {
        if (!run.mayLeave()) return false;
        return mark.empty() ? run.child().inherits == DifficultChild::Inherits::nothing
                            : run.child().program.env.at(runMark) == mark;
    }

    /// The names of the runs with this mark; of all runs if the mark is empty.
    static std::string names(const Runs& runs, const std::string& mark) {
        std::string all;
        for (const auto& run : runs)
            if (mark.empty() || run->child().program.env.at(runMark) == mark)
                all += run->child().what + (run->wasAsked() ? " (asked); " : "; ");
        return all;
    }

    TemporaryFolder folder_;
    std::mt19937 random_{2'718'281}; // NOLINT: the same troubles every time
    Kinds all_{difficultChildren(folder_.path())};
    Kinds ending_; ///< without those that have to be stopped
    OrphanWatch watch_ = OrphanWatch::create().value();
    RealPrograms programs_{&watch_};
    Endings endings_;
    std::set<std::string> daemons_; ///< stopped runs whose daemons lived on
    std::set<std::string> left_;    ///< other runs of which a process lived on
    std::size_t begun_ = 0;
    std::set<pid_t> childrenAtFirst_ = ownChildren();
    std::size_t descriptors_ = openDescriptors();
};

TEST(ProcessStorm, NothingIsLeftOfDifficultChildrenHoweverTheyEnd) {
    EXPECT_TRUE(succeedsAboveOrphans([] {
        ProcessStorm().rage();
        return !testing::Test::HasFailure();
    }));
}

} // namespace
} // namespace morvex
