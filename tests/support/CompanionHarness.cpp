#include "tests/support/CompanionHarness.h"

#include <filesystem>

namespace morvex {

void CompanionHarness::make() {
    companion = std::make_unique<Companion>(services());
    features = std::make_unique<Features>(*companion);
}

void CompanionHarness::start() {
    make();
    executor.start(companion->spustit());
    executor.runUntilIdle();
}

std::shared_ptr<ScriptedSocket> CompanionHarness::startPaired() {
    mac = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    (void)store.held.ulozIdentitu(mac);
    (void)store.held.ulozProtejsek(phone.asPeer());
    auto socket = sockets.layOut();
    start();
    phone.attach(socket, *mac);
    return socket;
}

std::shared_ptr<ScriptedSocket> CompanionHarness::startWithSession() {
    auto socket = startPaired();
    phone.logIn();
    executor.runUntilIdle();
    phone.exchangeHellos();
    return socket;
}

std::shared_ptr<ScriptedSocket> CompanionHarness::startSecured() {
    auto socket = startWithSession();
    executor.runUntilIdle();
    (void)phone.take();
    return socket;
}

std::shared_ptr<ScriptedSocket> CompanionHarness::connectAgain(ScriptedPhone& device) {
    auto socket = sockets.layOut();
    companion->pripojit();
    executor.runUntilIdle();
    device.attach(socket, *mac);
    device.logIn();
    executor.runUntilIdle();
    device.exchangeHellos();
    return socket;
}

void CompanionHarness::logInBeforeThePhone() {
    phone.logIn(false);
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Telefon není připojený");
    phone.deliver({RelayMessage::PeerOnline{true}});
    executor.runUntilIdle();
    phone.exchangeHellos();
}

void CompanionHarness::end() {
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    while (executor.runUntilIdle() + workers->runUntilIdle() + records->runUntilIdle() > 0) continue;
    EXPECT_EQ(ending.live(), 0);
    features.reset();
    companion.reset();
}

std::string CompanionHarness::allowFolder(const std::string& name) {
    auto path = (temporary.path() / name).string();
    std::filesystem::create_directory(path);
    picker.answers.push_back({path});
    EXPECT_TRUE(executor.run(features->files.slozky().pridat()));
    return path;
}

CompanionHarness::Answer CompanionHarness::call(const std::string& tool, const std::string& argumentsJSON) {
    phone.call(tool, argumentsJSON, "req-1");
    executor.runUntilIdle();
    for (const auto& received : phone.take())
        if (const auto* result = received.payload.as<MacPayload::ToolResult>())
            return {result->ok, result->json, received.requestID};
    return {};
}

std::vector<AppSummary> CompanionHarness::customApps() const {
    auto apps = features->customApps.service().apps();
    for (auto& app : apps) app.outcome.reset();
    return apps;
}

std::vector<MacStatus> CompanionHarness::takeStatuses() {
    executor.runUntilIdle();
    std::vector<MacStatus> statuses;
    for (const auto& received : phone.take())
        if (const auto* status = received.payload.as<MacPayload::Status>()) {
            EXPECT_EQ(received.requestID, "status");
            statuses.push_back(status->status);
        }
    return statuses;
}

CompanionServices CompanionHarness::services() {
    return FakeDesktop::services(
        {.main = executor, .storage = *storage, .records = *records, .workers = *workers},
        {.relay = {.executor = executor, .clock = clock, .sockets = sockets}, .random = random}, http, store,
        environment, "1.2.3 (4)");
}

} // namespace morvex
