#pragma once

#include "foundation/OneShot.h"
#include "foundation/Signal.h"
#include "foundation/Task.h"
#include "platform/linux/evolution/EvolutionThread.h"
#include "platform/ports/LocalTime.h"
#include "platform/ports/PersonalDataStore.h"

#include <functional>
#include <memory>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace morvex {

/// What the three stores of the desktop's data share: the access, its changes and the thread on which every
/// call runs, one after the other. A caller is free as soon as it stops; the call is cancelled then. If a
/// call does not end a second after that, the next one starts another thread, four at most. Main thread only.
class EvolutionService {
  public:
    /// Both must outlive this object.
    EvolutionService(Executor& main, LocalTime& localTime);
    ~EvolutionService();

    EvolutionService(const EvolutionService&) = delete;
    EvolutionService& operator=(const EvolutionService&) = delete;

    [[nodiscard]] DataAccess access() const { return access_; }

    [[nodiscard]] Connection onChange(std::function<void()> slot) {
        return changes_.connect(std::move(slot));
    }

    Task<Result<void>> requestAccess(std::stop_token stop);

    /// Runs `work(desktop, zone, cancellable)`, which returns a `Result`, once the desktop is open. Where it
    /// cannot be opened the access ends.
    template <class Work>
    auto run(std::stop_token stop, Work work)
        -> Task<std::invoke_result_t<Work&, EvolutionDesktop&, const TimeZone&, GCancellable*>> {
        using Answer = std::invoke_result_t<Work&, EvolutionDesktop&, const TimeZone&, GCancellable*>;
        using Value = Answer::value_type;
        if (!hasThread()) co_return fail(silent());
        const auto shot = std::make_shared<OneShot<Answer>>();
        const std::shared_ptr<GCancellable> cancellable(g_cancellable_new(), g_object_unref);
        const auto thread = thread_;
        thread->post(cancellable.get(), [reply = Reply<Value>(shot), cancellable, zone = localTime_.zone(),
                                         work = std::move(work)](EvolutionDesktop& desktop) mutable {
            if (g_cancellable_is_cancelled(cancellable.get())) return;
            if (auto opened = desktop.open(cancellable.get()); !opened) return reply(fail(opened.error()));
            reply(work(desktop, zone, cancellable.get()));
        });
        const std::stop_callback onStop(stop, [thread, shot, cancellable] {
            shot->answer(fail(Abandoned{}));
            thread->cancel(cancellable.get());
        });
        auto answer = co_await shot->wait();
        if (!answer && answer.error().template as<RegistryUnreachable>()) setAccess(DataAccess::restricted);
        co_return answer;
    }

  private:
    class Changes;

    /// Replaces a thread that is stuck. Returns false if too many are.
    bool hasThread();
    static Error silent();
    void setAccess(DataAccess access);

    LocalTime& localTime_;
    Signal<> changes_;
    DataAccess access_ = DataAccess::notDetermined;
    std::shared_ptr<Changes> relay_;
    std::shared_ptr<EvolutionRegistry> registry_;
    std::shared_ptr<EvolutionThread> thread_;
};

/// The part of a store that is the same in all three.
template <class Port> class EvolutionStore : public Port {
  public:
    explicit EvolutionStore(EvolutionService& service) : service_(service) {}

    [[nodiscard]] DataAccess access() const override { return service_.access(); }

    Task<Result<void>> requestAccess(std::stop_token stop) override {
        return service_.requestAccess(std::move(stop));
    }

    [[nodiscard]] Connection onChange(std::function<void()> slot) override {
        return service_.onChange(std::move(slot));
    }

  protected:
    EvolutionService& service_;
};

} // namespace morvex
