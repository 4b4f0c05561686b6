#include "tests/phone/PhoneFixture.h"

#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"

#include <utility>
#include <vector>

namespace morvex {

namespace {

Task<void> drive(Phone& phone, std::optional<ExitCode>& ended) {
    ended = co_await runCommand(phone);
}

} // namespace

PhoneFixture::~PhoneFixture() {
    interruption.request_stop();
    executor.runUntilIdle();
    EXPECT_TRUE(ended || !phone) << "the command outlives its interruption";
}

void PhoneFixture::start(std::vector<const char*> arguments) {
    auto options = Options::parse(arguments);
    ASSERT_TRUE(options) << options.error().popis().czech();
    phone = std::make_unique<Phone>(
        Phone{.options = *std::move(options),
              .link = {.relay = {.executor = executor, .clock = clock, .sockets = sockets}, .random = random},
              .http = http,
              .localTime = localTime,
              .store = store,
              .settings = settings,
              .records = records,
              .tasks = tasks,
              .inbox = inbox,
              .keyboard = keyboard,
              .terminal = terminal});
    ended.reset();
    executor.start(drive(*phone, ended));
    run();
}

void PhoneFixture::pass(Clock::Duration time) {
    clock.advance(time);
    run();
}

void PhoneFixture::paired() {
    store.ulozIdentitu(identita).value();
    store.ulozProtejsek(mac.asPeer()).value();
    socket = sockets.layOut();
    mac.attach(socket, *identita);
}

void PhoneFixture::startInSession(std::vector<const char*> arguments) {
    paired();
    start(std::move(arguments));
    meet();
    send({MacPayload::Status{status()}}, "status");
}

void PhoneFixture::meet() {
    mac.logIn();
    run();
    mac.exchangeHellos();
    run();
}

void PhoneFixture::startPairing(std::initializer_list<const char*> arguments, bool macIsOnline) {
    store.ulozIdentitu(identita).value();
    http.replies.push_back({200, encode(PripojitOdpoved{mac.pair})});
    socket = sockets.layOut();
    mac.attach(socket, *identita);
    start(arguments);
    mac.logIn(macIsOnline);
    run();
}

void PhoneFixture::send(MacPayload payload, std::string requestID) {
    mac.send(std::move(payload), std::move(requestID));
    run();
}

std::size_t PhoneFixture::reachMilestones() {
    const auto reached = mac.reachMilestones();
    run();
    return reached;
}

MacStatus PhoneFixture::status() const {
    MacStatus status;
    status.protocolVersion = ProtocolVersion::current;
    status.appVersion = "0.1.0";
    status.deviceName = "Studovna";
    status.tools = {{"mac.status", "Řekne, co Mac umí.", ToolRisk::safeRead, "{}", false},
                    {"mac.mail.send", "Odešle mail.", ToolRisk::change, "{}", false}};
    status.claude.problem = Sentence("Vypnuto");
    status.codex.installed = true;
    status.codex.version = "1.2";
    status.allowedFolders = {"Plocha", "Projekty"};
    status.onPower = true;
    status.sentAt = clock.now();
    return status;
}

ApprovalRequest PhoneFixture::approval(std::string tool) const {
    return {.id = "A1",
            .tool = std::move(tool),
            .title = "Odeslat mail",
            .spoken = "Odeslat mail?",
            .detail = "Komu: eva@example.org",
            .expiresAt = clock.now() + std::chrono::seconds(120),
            .contentHash = "e3b0c44298fc1c14"};
}

} // namespace morvex
