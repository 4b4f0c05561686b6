#include "tests/attack/AttackedCompanion.h"

#include "shared/base/Require.h"
#include "shared/wire/Json.h"
#include "tests/support/Effort.h"

#include <condition_variable>
#include <filesystem>
#include <utility>

namespace morvex {

namespace {

using namespace std::chrono_literals;

std::string troubleOf(Companion& companion) {
    return companion.stav().potiz.value().value_or(Sentence("none")).czech();
}

/// The limit is far longer than any of these tests takes.
void watch(std::stop_token stop) {
    std::mutex mutex;
    std::condition_variable_any ended;
    std::unique_lock lock(mutex);
    require(ended.wait_for(lock, stop, 5min, [&stop] { return stop.stop_requested(); }),
            "an attack made the companion or its relay wait for ever");
}

} // namespace

AttackedCompanion::AttackedCompanion()
    : phoneClock(std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now())),
      watchdog_(watch) {
    mac = std::make_unique<RealCompanion>(identity, peer(), home.path().string());
    mac->allow(temporary.path().string());
    memory = std::make_unique<MemoryMeter>();
}

PairedPeer AttackedCompanion::peer() const {
    auto remembered = test::remembered(*phone.identita, DeviceRole::phone);
    remembered.relayURL = relay.address();
    return remembered;
}

void AttackedCompanion::TearDown() {
    // When the companion serves its phone again, it has handled everything sent before.
    expectRecovery();
    EXPECT_EQ(files(), written) << "what was done in the phone's name";
    EXPECT_EQ(mac->storedPeer(), peer());
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    tell(name, tries, counted + ", recovered, " + expectLittleMemory(*memory));
}

void AttackedCompanion::expectRecovery() {
    auto line = secure();
    EXPECT_EQ(call(*line, "mac.files.write", R"({"path":"after.txt","content":"x"})"),
              R"({"written":"after.txt"})");
    written.insert("after.txt");
}

std::unique_ptr<HostileRelay::Line> AttackedCompanion::connect() {
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (auto line = relay.take(20ms)) return line;
        mac->pass(31s);
    }
    require(false, "the companion does not connect any more");
    return nullptr;
}

std::unique_ptr<HostileRelay::Line> AttackedCompanion::logIn(bool phoneIsOnline) {
    // If the companion gives up the connection meanwhile, another one follows.
    for (;;) {
        auto line = connect();
        line->say(RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current});
        if (!line->receive()) continue;
        line->say(RelayMessage::Authenticated{phoneIsOnline});
        return line;
    }
}

std::unique_ptr<HostileRelay::Line> AttackedCompanion::secure() {
    auto line = logIn();
    auto message = line->receive();
    require(message && message->as<RelayMessage::Forward>(), "the companion sent no hello");
    phoneClock.setWallClock(mac->clock().now());
    auto hello = phone.newHello();
    phone.meet(*identity, message->as<RelayMessage::Forward>()->envelope);
    forward(*line, std::move(hello));
    return line;
}

std::string AttackedCompanion::call(HostileRelay::Line& line, const std::string& tool,
                                    const std::string& argumentsJSON) {
    forward(line, phone.seal({MacPayload::ToolCall{tool, argumentsJSON}}));
    return nextAnswer(line);
}

bool AttackedCompanion::isServed(HostileRelay::Line& line) {
    const auto answer = call(line, "mac.status", "{}");
    const bool isStatus = answer.contains("app_version");
    EXPECT_TRUE(isStatus || answer.empty()) << "something else was answered: " << answer;
    return isStatus;
}

std::string AttackedCompanion::nextAnswer(HostileRelay::Line& line) {
    while (auto message = line.receive()) {
        if (message->as<RelayMessage::Authenticate>()) ++signatures;
        const auto* sent = message->as<RelayMessage::Forward>();
        if (!sent || sent->envelope.kind != EnvelopeKind::data) continue;
        auto payload = phone.open(sent->envelope);
        if (!payload) continue;
        if (const auto* result = payload->as<MacPayload::ToolResult>()) return result->json;
    }
    return {};
}

Envelope AttackedCompanion::writeOf(const std::string& name) {
    return phone.seal(
        {MacPayload::ToolCall{"mac.files.write", R"({"path":")" + name + R"(","content":"x"})"}});
}

std::vector<std::string> AttackedCompanion::answersUntilStatus(HostileRelay::Line& line) {
    std::vector<std::string> answers{call(line, "mac.status", "{}")};
    while (!answers.back().empty() && answers.back().find("app_version") == std::string::npos)
        answers.push_back(nextAnswer(line));
    answers.pop_back();
    return answers;
}

std::set<std::string> AttackedCompanion::files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(temporary.path()))
        names.insert(entry.path().filename());
    return names;
}

std::string AttackedCompanion::trouble() {
    return mac->on([this] { return troubleOf(mac->companion()); });
}

void AttackedCompanion::untilTrouble(const std::string& beginning) {
    mac->until([&] { return troubleOf(mac->companion()).starts_with(beginning); });
}

void AttackedCompanion::forgetTrouble() {
    mac->on([this] { mac->companion().stav().potiz = std::nullopt; });
}

} // namespace morvex
