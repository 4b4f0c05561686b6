#include "platform/linux/evolution/EvolutionThread.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <thread>
#include <utility>

namespace morvex {

namespace {

using Time = std::chrono::steady_clock;

constexpr std::chrono::seconds patience{1};
constexpr std::chrono::seconds leftAtTheEnd{2};

std::atomic_int threadsGivenUp = 0;

GLibHandle<GCancellable> held(GCancellable* cancellable) {
    return GLibHandle<GCancellable>(G_CANCELLABLE(g_object_ref(cancellable)));
}

} // namespace

struct EvolutionThread::State {
    struct Job {
        GLibHandle<GCancellable> cancellable;
        Work work;
    };

    State(std::shared_ptr<EvolutionRegistry> shared, std::function<void()> told)
        : registry(std::move(shared)), changed(std::move(told)) {}

    void wake() const { g_main_context_wakeup(context.get()); }

    /// What waits, when it is this job's turn.
    std::optional<Job> next() {
        std::lock_guard lock(mutex);
        if (ending || jobs.empty()) return std::nullopt;
        Job job = std::move(jobs.front());
        jobs.pop_front();
        running = held(job.cancellable.get());
        return job;
    }

    void done() {
        std::lock_guard lock(mutex);
        running.reset();
        cancelled.reset();
    }

    const std::shared_ptr<EvolutionRegistry> registry;
    const std::function<void()> changed;
    const GLibHandle<GMainContext, g_main_context_unref> context{g_main_context_new()};
    std::mutex mutex; ///< guards what follows
    std::condition_variable over;
    std::deque<Job> jobs;
    GLibHandle<GCancellable> running;
    std::optional<Time::time_point> cancelled; ///< when `running` was
    bool ending = false;
    bool ended = false;
    bool isGivenUp = false;
};

EvolutionThread::EvolutionThread(std::shared_ptr<EvolutionRegistry> registry, std::function<void()> changed)
    : state_(std::make_shared<State>(std::move(registry), std::move(changed))) {
    std::thread([state = state_] { run(state); }).detach();
}

void EvolutionThread::run(const std::shared_ptr<State>& state) {
    ::pthread_setname_np(::pthread_self(), "kalendare");
    auto* context = state->context.get();
    g_main_context_push_thread_default(context);
    const auto hearSignals = [context] {
        while (g_main_context_iteration(context, FALSE)) continue;
    };
    {
        EvolutionDesktop desktop(state->registry, state->changed);
        const auto isEnding = [&state] {
            std::lock_guard lock(state->mutex);
            return state->ending;
        };
        while (!isEnding()) {
            hearSignals();
            if (auto job = state->next()) {
                job->work(desktop);
                job.reset();
                state->done();
            } else if (!isEnding()) {
                g_main_context_iteration(context, TRUE);
            }
        }
    }
    hearSignals();
    g_main_context_pop_thread_default(context);
    std::lock_guard lock(state->mutex);
    state->ended = true;
    if (state->isGivenUp) --threadsGivenUp;
    state->over.notify_all();
}

void EvolutionThread::end() {
    std::deque<State::Job> dropped;
    GLibHandle<GCancellable> running;
    {
        std::lock_guard lock(state_->mutex);
        state_->ending = true;
        dropped = std::exchange(state_->jobs, {});
        if (state_->running) running = held(state_->running.get());
    }
    if (running) g_cancellable_cancel(running.get());
    state_->wake();
    std::unique_lock lock(state_->mutex);
    if (!state_->isGivenUp) state_->over.wait_for(lock, leftAtTheEnd, [this] { return state_->ended; });
}

void EvolutionThread::post(GCancellable* cancellable, Work work) {
    {
        std::lock_guard lock(state_->mutex);
        if (state_->ending) return;
        state_->jobs.push_back({held(cancellable), std::move(work)});
    }
    state_->wake();
}

void EvolutionThread::cancel(GCancellable* cancellable) {
    {
        std::lock_guard lock(state_->mutex);
        if (state_->running.get() == cancellable && !state_->cancelled) state_->cancelled = Time::now();
    }
    g_cancellable_cancel(cancellable);
}

bool EvolutionThread::isStuck() const {
    std::lock_guard lock(state_->mutex);
    return state_->cancelled && Time::now() - *state_->cancelled > patience;
}

void EvolutionThread::giveUp(EvolutionThread& successor) {
    std::deque<State::Job> waiting;
    {
        std::lock_guard lock(state_->mutex);
        waiting = std::exchange(state_->jobs, {});
        state_->ending = true;
        if (!state_->ended && !std::exchange(state_->isGivenUp, true)) ++threadsGivenUp;
    }
    for (auto& job : waiting) successor.post(job.cancellable.get(), std::move(job.work));
}

int EvolutionThread::givenUp() {
    return threadsGivenUp;
}

} // namespace morvex
