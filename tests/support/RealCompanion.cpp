#include "tests/support/RealCompanion.h"

#include "tests/support/Await.h"

namespace morvex {

namespace {

Date realTime() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

Task<bool> asking(Companion* companion, std::string title, std::string detail) {
    co_return co_await companion->schvalovani().pozadat("mac.mail.send", std::move(title), "Smím?",
                                                        std::move(detail));
}

} // namespace

RealCompanion::RealCompanion(const std::string& relayAddress, const std::string& authorities)
    : clock_(realTime()), network_({}, authorities), curl_(authorities) {
    start(relayAddress);
}

RealCompanion::RealCompanion(std::shared_ptr<const DeviceIdentity> identity, const PairedPeer& peer,
                             const std::string& home, const std::string& authorities)
    : clock_(realTime()), network_({}, authorities), curl_(authorities) {
    desktop_.folders.homeFolder = home;
    (void)store_.ulozIdentitu(std::move(identity));
    (void)store_.ulozProtejsek(peer);
    start(peer.relayURL);
}

void RealCompanion::start(const std::string& relayAddress) {
    desktop_.programs.answer = [](const OutsideProgram&) { return ScriptedPrograms::Answer{.status = 127}; };
    on([&] {
        companion_ = std::make_unique<Companion>(services());
        features_ = std::make_unique<Features>(*companion_);
        companion_->setRelayAdresa(relayAddress);
    });
    await(main_, companion_->spustit());
    // The status behind the first look for programs fails without a session. It must not replace the trouble
    // that a test waits for.
    auto& looks = companion_->stav().detectionsUnderWay;
    until([&looks] { return looks.value() == 0; });
    turnNetwork();
    on([] {});
}

RealCompanion::~RealCompanion() {
    await(main_, companion_->shutDown());
    on([this] {
        features_.reset();
        companion_.reset();
    });
}

std::string RealCompanion::qr() {
    on([this] { companion_->parovani().zacitParovani(); });
    auto& state = companion_->stav().parovani;
    until([&state] { return state.value().as<StavParovani::CekamNaTelefon>() != nullptr; });
    return on([&state] { return state.value().as<StavParovani::CekamNaTelefon>()->qr; });
}

void RealCompanion::agree() {
    auto& state = companion_->stav().parovani;
    until([&state] { return state.value().as<StavParovani::OverCislo>() != nullptr; });
    on([this, &state] {
        companion_->parovani().potvrditCislo(state.value().as<StavParovani::OverCislo>()->cislo);
    });
    until([&state] { return state.value().as<StavParovani::Necinne>() != nullptr; });
}

void RealCompanion::allow(const std::string& path) {
    desktop_.picker.answers.push_back({path});
    await(main_, features_->files.slozky().pridat());
}

std::future<bool> RealCompanion::ask(const std::string& title, const std::string& detail) {
    auto promise = std::make_shared<std::promise<bool>>();
    auto answer = promise->get_future();
    on([&] { detail::driveAwait(asking(companion_.get(), title, detail), promise); });
    return answer;
}

void RealCompanion::pass(std::chrono::seconds time) {
    clock_.advance(time);
    clock_.setWallClock(realTime());
}

void RealCompanion::turnNetwork() {
    // What is due may make other work due at once, but not endlessly.
    constexpr int mostInARow = 20;
    for (int turn = 0; turn < mostInARow; ++turn) {
        std::promise<void> taken;
        network_.executor().post([&taken] { taken.set_value(); });
        taken.get_future().wait();
    }
}

CompanionServices RealCompanion::services() {
    return desktop_.services(
        {.main = main_, .storage = main_, .records = main_, .workers = workers_},
        {.relay = {.executor = network_.executor(), .clock = clock_, .sockets = sockets_}, .random = random_},
        http_, store_);
}

} // namespace morvex
