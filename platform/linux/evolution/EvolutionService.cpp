#include "platform/linux/evolution/EvolutionService.h"

#include "shared/base/SystemTrouble.h"

#include <mutex>

namespace morvex {

namespace {

constexpr int mostGivenUp = 4;

} // namespace

/// Brings the changes that the thread tells to the main executor, several at once as one. Outlives the
/// service if a thread still blocks.
class EvolutionService::Changes : public std::enable_shared_from_this<Changes> {
  public:
    Changes(Executor& main, EvolutionService& service) : main_(&main), service_(&service) {}

    void tell() {
        std::lock_guard lock(mutex_);
        if (!main_ || isTold_) return;
        isTold_ = true;
        main_->post([self = shared_from_this()] { self->arrive(); });
    }

    void end() {
        std::lock_guard lock(mutex_);
        main_ = nullptr;
        service_ = nullptr;
    }

  private:
    void arrive() {
        std::unique_lock lock(mutex_);
        isTold_ = false;
        auto* service = service_;
        lock.unlock();
        if (service) service->changes_.tell();
    }

    std::mutex mutex_;
    Executor* main_;
    EvolutionService* service_; ///< used on the main thread only
    bool isTold_ = false;
};

EvolutionService::EvolutionService(Executor& main, LocalTime& localTime)
    : localTime_(localTime), relay_(std::make_shared<Changes>(main, *this)) {}

EvolutionService::~EvolutionService() {
    relay_->end();
    if (thread_) thread_->end();
    if (registry_) registry_->end();
}

Error EvolutionService::silent() {
    return TextError(popis(SystemTrouble::serviceSilent));
}

bool EvolutionService::hasThread() {
    if (thread_ && !thread_->isStuck()) return true;
    if (thread_ && EvolutionThread::givenUp() >= mostGivenUp) return false;
    const auto tell = [relay = relay_] { relay->tell(); };
    if (!registry_) registry_ = std::make_shared<EvolutionRegistry>(tell);
    auto fresh = std::make_shared<EvolutionThread>(registry_, tell);
    if (thread_) thread_->giveUp(*fresh);
    thread_ = std::move(fresh);
    return true;
}

Task<Result<void>> EvolutionService::requestAccess(std::stop_token stop) {
    const auto reached =
        co_await run(std::move(stop),
                     [](EvolutionDesktop&, const TimeZone&, GCancellable*) -> Result<void> { return {}; });
    // Who stops asking learns nothing new.
    const bool isNews = reached || !reached.error().as<Abandoned>() || access_ == DataAccess::notDetermined;
    if (isNews) setAccess(reached ? DataAccess::full : DataAccess::restricted);
    co_return reached;
}

void EvolutionService::setAccess(DataAccess access) {
    if (std::exchange(access_, access) != access) changes_.tell();
}

} // namespace morvex
