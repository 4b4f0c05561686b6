#include "app/programs/BehProgramu.h"

#include "shared/base/Try.h"

namespace morvex {

namespace {

constexpr std::chrono::seconds betweenStages{4};
/// How long to wait for output from processes that still hold the pipes after the program itself has ended.
constexpr std::chrono::seconds drainLimit{2};

} // namespace

BehProgramu::~BehProgramu() {
    if (zastaveni_ == Zastaveni::prvniStupen) child_->signalAll(ChildSignal::kill);
}

Result<void> BehProgramu::spust(ProcessLauncher& launcher, const OutsideProgram& program,
                                Clock::Duration timeout) {
    {
        // Held during the launch, so that an immediate exit of the child is handled only after it.
        std::lock_guard lock(zamek_);
        TRY(auto, child, launcher.launch(program, *this));
        child_ = std::move(child);
        bezi_ = true;
    }
    limit_ = clock_.at(clock_.sinceBoot() + timeout, [weak = weak_from_this()] {
        if (auto self = weak.lock()) self->zastav(&BehProgramu::vyprselo_);
    });
    return {};
}

Task<VysledekProcesu> BehProgramu::vysledek() {
    co_await konec_.wait();
    clock_.forget(limit_);
    clock_.forget(dobeh_);
    std::lock_guard lock(zamek_);
    co_return VysledekProcesu{.navratovyKod = status_,
                              .vystup = sber_.vezmiVystup(),
                              .vystupUriznut = sber_.jeVystupUriznut(),
                              .chyby = sber_.vezmiChyby(),
                              .zruseno = zruseno_,
                              .vyprselCas = vyprselo_};
}

bool BehProgramu::zrusit() {
    return zastav(&BehProgramu::zruseno_);
}

bool BehProgramu::ukoncit() {
    std::lock_guard lock(zamek_);
    if (bezi_) child_->signalGroup(ChildSignal::terminate);
    return bezi_;
}

void BehProgramu::exited(std::int32_t status) {
    {
        std::lock_guard lock(zamek_);
        bezi_ = false;
        status_ = status;
    }
    dobeh_ = clock_.at(clock_.sinceBoot() + drainLimit, [weak = weak_from_this()] {
        if (auto self = weak.lock()) self->child_->abandonOutput();
    });
}

void BehProgramu::ended() {
    sber_.dokonci();
    konec_.answer(true);
}

bool BehProgramu::zastav(Priznak duvod) {
    bool first = false;
    {
        std::lock_guard lock(zamek_);
        if (!bezi_) return false;
        this->*duvod = true;
        first = zastaveni_ == Zastaveni::zadne;
        if (first) zastaveni_ = Zastaveni::prvniStupen;
        child_->signalAll(ChildSignal::terminate);
    }
    if (first) clock_.at(clock_.sinceBoot() + betweenStages, [self = shared_from_this()] { self->zabij(); });
    return true;
}

void BehProgramu::zabij() {
    std::lock_guard lock(zamek_);
    zastaveni_ = Zastaveni::druhyStupen;
    child_->signalAll(ChildSignal::kill);
}

} // namespace morvex
