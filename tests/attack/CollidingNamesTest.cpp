#include "relay/FailureFrame.h"
#include "tests/attack/AttackedCompanion.h"
#include "tests/relay/RunningRelay.h"
#include "tests/support/Effort.h"
#include "tests/support/RelayClient.h"

#include <string>
#include <vector>

namespace morvex {
namespace {

/// An object whose names a hash table may have to compare with each other. Whether they really collide
/// depends on the address of the table, so texts are refused when they could collide.
std::string objectOf(std::size_t members, std::size_t nameSize = 7) {
    std::string text = "{";
    for (std::size_t i = 0; i < members; ++i) {
        auto name = std::to_string(1'000'000 + i);
        name.insert(0, nameSize - name.size(), 'n');
        text += (i > 0 ? ",\"" : "\"") + name + "\":0";
    }
    return text + '}';
}

std::string listOf(std::size_t count, const std::string& value) {
    std::string text = "[0";
    while (count-- > 0) text += ',' + value;
    return text + ']';
}

/// Values that are expensive to read, for adding to a genuine message under an unused name.
std::vector<std::string> dearValues() {
    return {objectOf(800),
            objectOf(65'536),
            objectOf(200'000),
            objectOf(300, 7'000),
            listOf(8, objectOf(300)),
            listOf(120, objectOf(120)),
            listOf(2'000, objectOf(15)),
            R"({"a":{"b":[)" + objectOf(800) + "]}}",
            listOf(500'000, "0"),
            listOf(500'000, "[]")};
}

/// The most that may be added.
std::string honestValue() {
    return listOf(200, objectOf(16)) + ',' + R"("more":)" + objectOf(500);
}

/// Adds a value to the inner one of the two objects that end `json`.
std::string with(std::string json, const std::string& value) {
    json.resize(json.size() - 2);
    return json + R"(,"future":)" + value + "}}";
}

class CollidingNames : public AttackedCompanion {
  protected:
    CollidingNames() {
        tries = values.size();
        memory = std::make_unique<MemoryMeter>();
    }

    const std::vector<std::string> values = dearValues();
};

TEST_F(CollidingNames, AFrameOfTheRelayIsRefusedBeforeItIsBuilt) {
    const auto genuine = encode(RelayMessage{RelayMessage::PeerOnline{true}});
    for (const auto& value : values) {
        auto line = logIn(false);
        line->send(with(genuine, value));
        EXPECT_FALSE(line->receive())
            << "a frame that was read would have been greeted: " << value.substr(0, 40);
    }
    auto line = logIn(false);
    line->send(with(genuine, honestValue()));
    EXPECT_TRUE(line->receive());
    counted = "each ended the connection";
}

TEST_F(CollidingNames, AMessageOfThePhoneIsDropped) {
    auto line = secure();
    const auto genuine = encode(
        MacPayload{MacPayload::ToolCall{"mac.files.write", R"({"path":"colliding.txt","content":"x"})"}});
    for (const auto& value : values) {
        forgetTrouble();
        forward(*line, phone.sealText(with(genuine, value)));
        EXPECT_TRUE(isServed(*line));
        EXPECT_EQ(trouble(), "Zprávu nejde ověřit: Zpráva má příliš mnoho hodnot.") << value.substr(0, 40);
    }
    counted = "each dropped, the session stands";
}

TEST_F(CollidingNames, ArgumentsOfAToolCountAsNone) {
    auto line = secure();
    const auto argumentsWith = [](const std::string& value) {
        return R"({"path":"colliding.txt","content":"x","future":)" + value + '}';
    };
    const auto none = call(*line, "mac.files.write", "{}");
    for (const auto& value : values)
        EXPECT_EQ(call(*line, "mac.files.write", argumentsWith(value)), none) << value.substr(0, 40);
    written.insert("colliding.txt");
    EXPECT_NE(call(*line, "mac.files.write", argumentsWith(honestValue())), none);
    counted = "each as a call without arguments";
}

TEST_F(CollidingNames, ARelayEndsWhoeverSendsThemAndServesTheOther) {
    RunningRelay served;
    const auto pair = pairAt(served.port());
    DeviceSocket there(served.port());
    there.logIn(pair, pair.mac, false);
    const auto online = encode(RelayMessage{RelayMessage::PeerOnline{true}});
    for (const auto& value : values) {
        DeviceSocket sender(served.port());
        sender.logIn(pair, pair.phone, true);
        EXPECT_EQ(there.read(), online);
        sender.write(with(pair.fromPhone(), value));
        EXPECT_EQ(sender.read(), failureFrame(RelayFailure::malformed)) << value.substr(0, 40);
        EXPECT_EQ(there.read(), encode(RelayMessage{RelayMessage::PeerOnline{false}}));
    }
    DeviceSocket sender(served.port());
    sender.logIn(pair, pair.phone, true);
    EXPECT_EQ(there.read(), online);
    const auto honest = with(pair.fromPhone(), honestValue());
    sender.write(honest);
    EXPECT_EQ(there.read(), honest);
    counted = "each ended its sender as malformed, none reached the peer";
}

} // namespace
} // namespace morvex
