#include "bench/BusyComputer.h"

#include "tests/support/Await.h"

#include <thread>

namespace morvex {

BusyComputer::BusyComputer(Device& device, const PairedPeer& phone, Clock& clock, Random& random,
                           const std::filesystem::path& home)
    : device_(device), sockets_(device.sockets) {
    desktop_.folders.homeFolder = home;
    desktop_.picker.answers.push_back({home});
    desktop_.programs.answer = [](const OutsideProgram&) { return ScriptedPrograms::Answer{.status = 127}; };
    (void)store_.ulozIdentitu(device.identita);
    (void)store_.ulozProtejsek(phone);
    await(device.main, start(this, clock, random));
}

Task<void> BusyComputer::start(BusyComputer* self, Clock& clock, Random& random) {
    auto& device = self->device_;
    self->companion_ = std::make_unique<Companion>(self->desktop_.services(
        {device.main, device.records, device.records, self->files_},
        {{device.sockets.executor(), clock, self->sockets_}, random}, self->http_, self->store_));
    self->features_ = std::make_unique<Features>(*self->companion_);
    co_await self->features_->files.slozky().pridat();
    co_await self->companion_->spustit();
}

BusyComputer::~BusyComputer() {
    await(device_.main, end(this));
}

Task<void> BusyComputer::end(BusyComputer* self) {
    co_await self->companion_->shutDown();
    self->features_.reset();
    self->companion_.reset();
}

void BusyComputer::occupyFileWork(std::chrono::seconds time) {
    files_.post([time] { std::this_thread::sleep_for(time); });
}

std::string BusyComputer::trouble() {
    return await(device_.main, tellTrouble(companion_.get()));
}

Task<std::string> BusyComputer::tellTrouble(Companion* companion) {
    co_return companion->stav().potiz.value().value_or(Sentence()).czech();
}

} // namespace morvex
