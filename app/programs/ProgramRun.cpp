#include "app/programs/ProgramRun.h"

#include "shared/base/Try.h"

namespace morvex {

namespace {

constexpr std::chrono::seconds betweenStages{4};
/// How long to wait for output from processes that still hold the pipes after the program itself has ended.
constexpr std::chrono::seconds drainLimit{2};

} // namespace

ProgramRun::~ProgramRun() {
    if (stopStage_ == StopStage::firstStage) child_->signalAll(ChildSignal::kill);
}

Result<void> ProgramRun::spust(ProcessLauncher& launcher, const OutsideProgram& program,
                               Clock::Duration timeout) {
    {
        // Held during the launch, so that an immediate exit of the child is handled only after it.
        std::lock_guard lock(zamek_);
        TRY(auto, child, launcher.launch(program, *this));
        child_ = std::move(child);
        bezi_ = true;
    }
    limit_ = clock_.at(clock_.sinceBoot() + timeout, [weak = weak_from_this()] {
        if (auto self = weak.lock()) self->stopFor(&ProgramRun::vyprselo_);
    });
    return {};
}

Task<VysledekProcesu> ProgramRun::vysledek() {
    co_await ended_.wait();
    clock_.forget(limit_);
    clock_.forget(drainTimer_);
    std::lock_guard lock(zamek_);
    co_return VysledekProcesu{.navratovyKod = status_,
                              .vystup = collector_.takeOutput(),
                              .isOutputCut = collector_.isOutputCut(),
                              .chyby = collector_.takeErrors(),
                              .zruseno = zruseno_,
                              .vyprselCas = vyprselo_};
}

bool ProgramRun::zrusit() {
    return stopFor(&ProgramRun::zruseno_);
}

bool ProgramRun::askToEnd() {
    std::lock_guard lock(zamek_);
    if (bezi_) child_->signalGroup(ChildSignal::terminate);
    return bezi_;
}

void ProgramRun::exited(std::int32_t status) {
    {
        std::lock_guard lock(zamek_);
        bezi_ = false;
        status_ = status;
    }
    drainTimer_ = clock_.at(clock_.sinceBoot() + drainLimit, [weak = weak_from_this()] {
        if (auto self = weak.lock()) self->child_->abandonOutput();
    });
}

void ProgramRun::ended() {
    collector_.dokonci();
    ended_.answer(true);
}

bool ProgramRun::stopFor(Flag duvod) {
    bool first = false;
    {
        std::lock_guard lock(zamek_);
        if (!bezi_) return false;
        this->*duvod = true;
        first = stopStage_ == StopStage::none;
        if (first) stopStage_ = StopStage::firstStage;
        child_->signalAll(ChildSignal::terminate);
    }
    if (first)
        clock_.at(clock_.sinceBoot() + betweenStages, [self = shared_from_this()] { self->killAll(); });
    return true;
}

void ProgramRun::killAll() {
    std::lock_guard lock(zamek_);
    stopStage_ = StopStage::secondStage;
    child_->signalAll(ChildSignal::kill);
}

} // namespace morvex
