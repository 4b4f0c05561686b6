#include "tests/app/programs/RealPrograms.h"
#include "tests/fault/DifficultChildren.h"
#include "tests/fault/MarkedProcesses.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <random>
#include <set>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Ends = DifficultChild::Ends;

/// The variable that tells of which run a process descends.
constexpr auto runMark = "MORVEX_TEST_RUN";

std::size_t openDescriptors() {
    auto all = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

/// One run of a difficult child, and who troubled it.
class TroubledRun {
  public:
    TroubledRun(RealPrograms& programs, const DifficultChild& child)
        : child_(child),
          runner_(programs.launcher, programs.clock),
          result_(std::async(std::launch::async, [this, &programs] {
              auto result =
                  await(programs.home, runner_.spustit(child_.program, RealPrograms::limit,
                                                       [this](std::string_view line) { note(line); }));
              linesAtTheEnd_ = lines_;
              return result;
          })) {}

    void cancel() {
        if (runner_.zrusit()) cancelled_ = true;
    }

    void askToEnd() {
        if (runner_.ukoncit()) asked_ = true;
    }

    [[nodiscard]] bool hasEnded() const { return result_.wait_for(2ms) == std::future_status::ready; }

    [[nodiscard]] bool hasBegun() const { return ready_ || child_.begins == DifficultChild::Begins::atOnce; }

    /// Whether processes may be left of it because it was asked politely and took its time: the runner, which
    /// kills whom it stops, never had to. Known once its end was looked at.
    [[nodiscard]] bool mayLeaveAsAsked() const { return asked_ && !wasStopped_; }

    [[nodiscard]] bool mayLeave() const {
        return mayLeaveAsAsked() || child_.leaves == DifficultChild::Leaves::processes;
    }

    void expectItsEnd() {
        auto result = result_.get();
        SCOPED_TRACE(child_.what);
        EXPECT_EQ(result.has_value(), child_.ends != Ends::neverBegins);
        if (!result) return;
        wasStopped_ = result->zruseno || result->vyprselCas;
        const bool stopped = wasStopped_ || asked_;
        EXPECT_EQ(result->zruseno, cancelled_);
        if (child_.ends == Ends::whenStopped) EXPECT_TRUE(stopped);
        if (!stopped && child_.status) EXPECT_EQ(result->navratovyKod, *child_.status);
    }

    /// Long after the end.
    void expectNoLateCallback() const { EXPECT_EQ(lines_, linesAtTheEnd_) << child_.what; }

    [[nodiscard]] const DifficultChild& child() const { return child_; }

  private:
    void note(std::string_view line) {
        ++lines_;
        if (line == "ready") ready_ = true;
    }

    DifficultChild child_;
    ProcessRunner runner_;
    std::atomic<std::size_t> lines_ = 0;
    std::atomic<bool> ready_ = false;
    std::size_t linesAtTheEnd_ = 0;
    bool cancelled_ = false;
    bool asked_ = false;
    bool wasStopped_ = false; ///< cancelled, or out of time
    std::future<Result<VysledekProcesu>> result_;
};

class ProcessStormTest : public testing::Test {
  protected:
    using Runs = std::vector<std::unique_ptr<TroubledRun>>;

    Runs begin(std::size_t count) {
        Runs runs;
        for (std::size_t i = 0; i < count; ++i) {
            auto child = children_[begun_ % children_.size()];
            child.program.env[runMark] = std::to_string(begun_++);
            kinds_.insert(child.what);
            runs.push_back(std::make_unique<TroubledRun>(*programs_, child));
        }
        return runs;
    }

    /// Somebody cancels, asks, waits or lets time pass, in any order, until all have ended.
    void troubleUntilTheEnd(Runs& runs) {
        for (auto& run : runs)
            while (!run->hasBegun()) std::this_thread::yield();
        auto isRunning = [](const auto& run) { return !run->hasEnded(); };
        while (std::ranges::any_of(runs, isRunning)) {
            auto& run = *runs[random_() % runs.size()];
            switch (random_() % 8) {
            case 0:
                run.cancel();
                break;
            case 1:
                run.askToEnd();
                break;
            case 2:
                programs_->clock.advance(RealPrograms::limit);
                break;
            case 3:
                programs_->clock.advance(1s);
                break;
            case 4:
                programs_->clock.advance(4s);
                break;
            case 5:
                std::thread([&run] { run.cancel(); }).join();
                break;
            default:
                std::this_thread::yield();
            }
        }
    }

    void round(std::size_t count) {
        auto runs = begin(count);
        troubleUntilTheEnd(runs);
        for (auto& run : runs) {
            run->expectItsEnd();
            if (run->mayLeaveAsAsked()) ++asked_;
            if (run->mayLeave()) leaving_.insert(run->child().program.env.at(runMark));
        }
        programs_->clock.advance(4s);
        settle();
        expectNothingLeft();
        for (const auto& run : runs) run->expectNoLateCallback();
    }

    /// What the runs still had to do on their executor is done.
    void settle() {
        std::promise<void> done;
        programs_->home.post([&done] { done.set_value(); });
        done.get_future().get();
        EXPECT_EQ(programs_->clock.waiting(), 0U);
    }

    /// What may live on is ended here.
    void expectNothingLeft() {
        auto deadline = std::chrono::steady_clock::now() + 10s;
        for (;;) {
            auto left = processesMarked(runMark);
            if (left.empty()) break;
            const bool isLate = std::chrono::steady_clock::now() > deadline;
            for (const auto& [mark, process] : left) {
                if (isLate)
                    ADD_FAILURE() << "left behind by: "
                                  << children_[std::stoul(mark) % children_.size()].what;
                if (isLate || leaving_.contains(mark)) ::kill(process, SIGKILL);
            }
            std::this_thread::yield();
        }
        EXPECT_FALSE(hasChildren()) << "a zombie";
        EXPECT_EQ(openDescriptors(), descriptors_);
    }

    TemporaryFolder folder_;
    std::vector<DifficultChild> children_ = difficultChildren(folder_.path());
    std::mt19937 random_{2'718'281}; // NOLINT: the same troubles every time
    std::unique_ptr<RealPrograms> programs_ = std::make_unique<RealPrograms>();
    std::set<std::string> kinds_;
    std::set<std::string> leaving_; ///< the runs of which processes may be left
    std::size_t begun_ = 0;
    std::size_t asked_ = 0; ///< of them politely and never stopped
    std::size_t descriptors_ = 0;
};

TEST_F(ProcessStormTest, NothingIsLeftOfDifficultChildrenHoweverTheyEnd) {
    ASSERT_GE(children_.size(), 30U);
    std::ranges::shuffle(children_, random_);
    descriptors_ = openDescriptors();
    const auto total = cases(160, 1'000);
    while (begun_ < total) round(std::min<std::size_t>(1 + random_() % 6, total - begun_));
    tell("Process runner", begun_,
         std::to_string(kinds_.size()) + " kinds of children, " + std::to_string(asked_) +
             " runs asked to end and let be, of the others " + "nothing was left");
}

} // namespace
} // namespace morvex
