#pragma once

#include "app/programs/ProcessRunner.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace morvex {

/// The lines that a run has delivered so far, for a test on another thread.
class Lines {
  public:
    NaRadek callback() {
        return [this](std::string_view line) {
            std::lock_guard lock(mutex_);
            lines_.emplace_back(line);
            more_.notify_all();
        };
    }

    /// Blocks until the line is there.
    void waitFor(const std::string& line) {
        std::unique_lock lock(mutex_);
        require(more_.wait_for(lock, std::chrono::minutes(1),
                               [&] { return std::ranges::find(lines_, line) != lines_.end(); }),
                "a line did not come");
    }

    void waitForAny() {
        std::unique_lock lock(mutex_);
        require(more_.wait_for(lock, std::chrono::minutes(1), [&] { return !lines_.empty(); }),
                "no line came");
    }

    std::vector<std::string> all() {
        std::lock_guard lock(mutex_);
        return lines_;
    }

  private:
    std::mutex mutex_;
    std::condition_variable more_;
    std::vector<std::string> lines_;
};

/// Real children, and a time that stands still.
class RealPrograms {
  public:
    explicit RealPrograms(OrphanWatch* watch = nullptr) : launcher(watch) {}

    static OutsideProgram shell(const std::string& script) {
        return {.binary = "/bin/sh", .args = {"-c", script}, .cwd = {}, .env = {{"PATH", "/usr/bin:/bin"}}};
    }

    Result<VysledekProcesu> run(OutsideProgram program, NaRadek naRadek = {}, Capture capture = {}) {
        ProcessRunner runner(launcher, clock);
        return await(home, runner.spustit(std::move(program), limit, std::move(naRadek), capture));
    }

    /// A run whose end the test awaits later.
    class Begun {
      public:
        Begun(RealPrograms& programs, OutsideProgram program)
            : runner(std::make_shared<ProcessRunner>(programs.launcher, programs.clock)),
              result_(std::async(std::launch::async, [&programs, runner = runner, lines = lines.get(),
                                                      program = std::move(program)]() mutable {
                  return await(programs.home,
                               runner->spustit(std::move(program), programs.limit, lines->callback()))
                      .value();
              })) {}

        VysledekProcesu end() { return result_.get(); }

        std::shared_ptr<ProcessRunner> runner;
        std::unique_ptr<Lines> lines = std::make_unique<Lines>();

      private:
        std::future<VysledekProcesu> result_;
    };

    Begun begin(const std::string& script) { return {*this, shell(script)}; }

    /// Until the earliest wait is this one: the step of a run that ends in it has been taken.
    void waitForWait(Clock::Duration wait) const {
        auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (clock.untilNext() != wait) {
            require(std::chrono::steady_clock::now() < end, "a wait did not begin");
            std::this_thread::yield();
        }
    }

    /// Lets the time limit of the only run strike. The program may be seen to run before its limit is set.
    void passLimit() {
        waitForWait(limit);
        clock.advance(limit);
    }

    static constexpr std::chrono::seconds limit{60};
    ThreadExecutor home{"home"};
    SystemLauncher launcher;
    ManualClock clock;
};

} // namespace morvex
