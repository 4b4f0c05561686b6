#include "relay/Switchboard.h"

#include "relay/FailureFrame.h"
#include "tests/support/TestPair.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <vector>

using namespace morvex;

namespace {

/// Keeps what it is given; `drain` makes it look sent.
struct RecordingLine final : Line {
    std::vector<std::string> frames;
    std::size_t bytes = 0;
    bool isPaused = false;
    std::optional<Ending> ending;
    Prefix address{};

    void deliver(std::string frame) override {
        bytes += frame.size();
        frames.push_back(std::move(frame));
    }

    [[nodiscard]] std::size_t waiting() const override { return bytes; }

    [[nodiscard]] std::size_t held() const override { return bytes; }

    [[nodiscard]] Prefix site() const override { return address; }

    void pauseReading() override { isPaused = true; }

    void resumeReading() override { isPaused = false; }

    void end(Ending given) override { ending = std::move(given); }

    std::vector<std::string> take() {
        bytes = 0;
        return std::exchange(frames, {});
    }
};

const std::string online = R"({"peerOnline":{"_0":true}})";
const std::string offline = R"({"peerOnline":{"_0":false}})";
const std::string welcomeAlone = R"({"authenticated":{"peerOnline":false}})";
const std::string welcomeBoth = R"({"authenticated":{"peerOnline":true}})";

using Frames = std::vector<std::string>;

struct SwitchboardTest : testing::Test {
    TestPair pair;
    Switchboard board{{.frame = 1 << 20, .waiting = 10'000, .heldInAll = 100'000}};
    RecordingLine mac;
    RecordingLine phone;

    Seat seatOf(const DeviceIdentity& device, const DeviceIdentity& peer) {
        return {pair.id, device.deviceID(), peer.deviceID()};
    }

    void connectMac(RecordingLine& line) { board.connect(line, seatOf(pair.mac, pair.phone)); }

    void connectPhone(RecordingLine& line) { board.connect(line, seatOf(pair.phone, pair.mac)); }

    void connectBoth() {
        connectMac(mac);
        connectPhone(phone);
        mac.take();
        phone.take();
    }
};

} // namespace

TEST_F(SwitchboardTest, TheFirstDeviceHearsThatItIsAlone) {
    connectMac(mac);
    EXPECT_EQ(mac.take(), Frames{welcomeAlone});
}

TEST_F(SwitchboardTest, TheNewcomerIsToldByItsWelcomeAndTheOtherByThePresence) {
    connectMac(mac);
    connectPhone(phone);
    EXPECT_EQ(phone.take(), Frames{welcomeBoth});
    EXPECT_EQ(mac.take(), (Frames{welcomeAlone, online}));
}

TEST_F(SwitchboardTest, AReplacedSocketIsClosedAndThePeerHearsOnlineOnceAndNeverOffline) {
    connectBoth();
    RecordingLine again;
    connectPhone(again);
    EXPECT_TRUE(phone.ending);
    EXPECT_EQ(phone.ending->lastFrame, "");
    board.disconnect(phone);
    board.receive(again, pair.fromPhone());
    EXPECT_EQ(again.take(), Frames{welcomeBoth});
    EXPECT_EQ(mac.take(), (Frames{online, pair.fromPhone()}));
}

TEST_F(SwitchboardTest, AReplacedSocketIsNotHeardAnyMore) {
    connectBoth();
    RecordingLine again;
    connectPhone(again);
    mac.take();
    board.receive(phone, pair.fromPhone());
    board.receive(phone, "nonsense");
    EXPECT_EQ(mac.take(), Frames{});
    EXPECT_EQ(phone.take(), Frames{});
}

TEST_F(SwitchboardTest, ADisconnectedDeviceIsReportedOnce) {
    connectBoth();
    board.disconnect(phone);
    board.disconnect(phone);
    EXPECT_EQ(mac.take(), Frames{offline});
    board.disconnect(mac);
    connectMac(mac);
    EXPECT_EQ(mac.take(), Frames{welcomeAlone});
}

TEST_F(SwitchboardTest, FramesPassUnchangedAndInOrder) {
    connectBoth();
    auto spaced = pair.fromMac();
    spaced.insert(1, " \t");
    spaced.insert(spaced.find(R"("v":)"), R"("extra":"\u0041",)");
    board.receive(mac, spaced);
    board.receive(mac, pair.fromMac());
    EXPECT_EQ(phone.take(), (Frames{spaced, pair.fromMac()}));
    EXPECT_EQ(mac.take(), Frames{});
}

TEST_F(SwitchboardTest, AnAbsentPeerIsReportedAndTheSocketStays) {
    connectMac(mac);
    mac.take();
    board.receive(mac, pair.fromMac());
    board.receive(mac, pair.fromMac());
    const auto failure = failureFrame(RelayFailure::peerOffline);
    EXPECT_EQ(mac.take(), (Frames{failure, failure}));
    EXPECT_FALSE(mac.ending);
}

TEST_F(SwitchboardTest, ACreatorWhomNobodyHasJoinedCanWait) {
    board.connect(mac, {pair.id, pair.mac.deviceID(), std::nullopt});
    board.receive(mac, pair.fromMac());
    EXPECT_EQ(mac.take(), (Frames{welcomeAlone, failureFrame(RelayFailure::peerOffline)}));
    connectPhone(phone);
    board.receive(mac, pair.fromMac());
    EXPECT_EQ(mac.take(), Frames{online});
    EXPECT_EQ(phone.take(), (Frames{welcomeBoth, pair.fromMac()}));
}

TEST_F(SwitchboardTest, AnEnvelopeOfAnotherAddressEndsItsSocket) {
    const auto stranger = DeviceIdentity::generate();
    TestPair foreign;
    foreign.id = PairID{"FOREIGN"};
    const std::vector<std::string> forged{
        pair.frame(stranger, pair.phone), pair.frame(pair.phone, pair.phone), pair.frame(pair.mac, stranger),
        pair.frame(pair.mac, pair.mac), foreign.frame(pair.mac, pair.phone)};
    for (const auto& frame : forged) {
        RecordingLine sender;
        RecordingLine receiver;
        connectMac(sender);
        connectPhone(receiver);
        sender.take();
        receiver.take();
        board.receive(sender, frame);
        EXPECT_EQ(sender.ending.value().lastFrame, failureFrame(RelayFailure::malformed)) << frame;
        EXPECT_EQ(receiver.take(), Frames{offline});
        board.disconnect(receiver);
    }
}

TEST_F(SwitchboardTest, FramesThatAreNoEnvelopesEndTheirSocket) {
    for (const char* frame : {"", "{}", R"({"peerOnline":{"_0":true}})", R"({"envelope":{"_0":{}}})"}) {
        RecordingLine sender;
        connectMac(sender);
        board.receive(sender, frame);
        EXPECT_EQ(sender.ending.value().lastFrame, failureFrame(RelayFailure::malformed)) << frame;
    }
}

TEST_F(SwitchboardTest, ADeviceCannotSpeakForALaterSocketOfItself) {
    connectBoth();
    board.refuse(phone, RelayFailure::tooLarge);
    EXPECT_EQ(phone.ending.value().lastFrame, failureFrame(RelayFailure::tooLarge));
    EXPECT_EQ(mac.take(), Frames{offline});
    RecordingLine again;
    connectPhone(again);
    board.refuse(phone, RelayFailure::tooLarge);
    board.disconnect(phone);
    EXPECT_FALSE(again.ending);
    EXPECT_EQ(mac.take(), Frames{online});
}

TEST_F(SwitchboardTest, ARevocationEndsBothSocketsAndNoOther) {
    connectBoth();
    TestPair others;
    others.id = PairID{"OTHERS"};
    RecordingLine other;
    board.connect(other, {others.id, others.mac.deviceID(), std::nullopt});
    board.revoke(pair.id);
    for (const auto* line : {&mac, &phone})
        EXPECT_EQ(line->ending.value().lastFrame, failureFrame(RelayFailure::revoked));
    EXPECT_FALSE(other.ending);
    board.disconnect(mac);
    board.disconnect(phone);
    EXPECT_EQ(mac.take(), Frames{});
    EXPECT_EQ(phone.take(), Frames{});
    board.revoke(pair.id);
}

TEST_F(SwitchboardTest, ASenderIsNotReadWhileItsReceiverHasTooMuchToTake) {
    connectBoth();
    const auto frame = pair.frame(pair.mac, pair.phone, 1, 3000);
    while (!mac.isPaused) board.receive(mac, frame);
    EXPECT_GT(phone.bytes, 10'000U);
    EXPECT_LE(phone.bytes, 10'000U + frame.size());
    EXPECT_FALSE(phone.isPaused) << "its own pings are still answered";

    phone.bytes = 5001;
    board.drained(phone);
    EXPECT_TRUE(mac.isPaused);
    phone.bytes = 5000;
    board.drained(phone);
    EXPECT_FALSE(mac.isPaused);
    EXPECT_FALSE(phone.isPaused);
}

TEST_F(SwitchboardTest, ASenderThatTakesNoAnswersIsNotRead) {
    connectMac(mac);
    while (!mac.isPaused) board.receive(mac, pair.fromMac());
    EXPECT_GT(mac.bytes, 10'000U);
    mac.bytes = 0;
    board.drained(mac);
    EXPECT_FALSE(mac.isPaused);
}

TEST_F(SwitchboardTest, ANewSocketOfASenderWaitsForTheSameReceiver) {
    connectBoth();
    while (!mac.isPaused) board.receive(mac, pair.fromMac());
    RecordingLine again;
    connectMac(again);
    EXPECT_TRUE(again.isPaused);
}

TEST_F(SwitchboardTest, ASenderIsReadAgainWhenItsSlowReceiverGoes) {
    connectBoth();
    while (!mac.isPaused) board.receive(mac, pair.fromMac());
    board.disconnect(phone);
    EXPECT_FALSE(mac.isPaused);
}

TEST_F(SwitchboardTest, ASenderIsReadAgainWhenItsSlowReceiverIsReplaced) {
    connectBoth();
    while (!mac.isPaused) board.receive(mac, pair.fromMac());
    RecordingLine again;
    connectPhone(again);
    EXPECT_FALSE(mac.isPaused);
    EXPECT_FALSE(again.isPaused);
}

TEST_F(SwitchboardTest, TheGreediestLineGoesWhenAllHoldTooMuch) {
    connectBoth();
    mac.bytes = 40'000;
    phone.bytes = 60'000;
    board.weigh(mac);
    board.weigh(phone);
    EXPECT_FALSE(phone.ending);
    phone.bytes = 60'001;
    board.weigh(phone);
    ASSERT_TRUE(phone.ending);
    EXPECT_EQ(phone.ending->closeCode, 1013);
    EXPECT_TRUE(phone.ending->freesMemory);
    EXPECT_FALSE(mac.ending);
    EXPECT_EQ(mac.take(), Frames{offline});
}

TEST_F(SwitchboardTest, WhileASiteHoldsMoreNobodyElseGoes) {
    const Prefix greedySite{.bytes = {1}, .length = 128};
    const Prefix otherSite{.bytes = {2}, .length = 128};
    std::array<RecordingLine, 4> greedy;
    for (std::size_t index = 0; index < greedy.size(); ++index) {
        greedy.at(index).address = greedySite;
        const PairID own{"GREEDY" + std::to_string(index)};
        board.connect(greedy.at(index), {own, pair.mac.deviceID(), std::nullopt});
        greedy.at(index).bytes = 15'000 + index;
        board.weigh(greedy.at(index));
    }
    mac.address = otherSite;
    connectMac(mac);
    mac.bytes = 39'000;
    board.weigh(mac);
    EXPECT_FALSE(greedy[3].ending);
    mac.bytes = 45'000;
    board.weigh(mac);
    EXPECT_FALSE(mac.ending);
    EXPECT_TRUE(greedy[3].ending) << "the greediest one of that site";
    for (std::size_t index = 0; index < 3; ++index) EXPECT_FALSE(greedy.at(index).ending) << index;
    mac.bytes = 60'000;
    board.weigh(mac);
    EXPECT_TRUE(mac.ending) << "now its own site holds the most";
    EXPECT_FALSE(greedy[2].ending);
}

TEST_F(SwitchboardTest, ALineThatClosesCountsUntilItIsGone) {
    connectMac(mac);
    mac.bytes = 60'000;
    RecordingLine again;
    connectMac(again);
    ASSERT_TRUE(mac.ending);
    EXPECT_FALSE(mac.ending->freesMemory);
    board.disconnect(mac);
    again.bytes = 40'001;
    board.weigh(again);
    EXPECT_TRUE(mac.ending->freesMemory);
    EXPECT_FALSE(again.ending);
}

TEST_F(SwitchboardTest, ALineThatIsGoneDoesNotCount) {
    connectMac(mac);
    mac.bytes = 60'000;
    board.weigh(mac);
    board.disconnect(mac);
    board.forget(mac);
    connectPhone(phone);
    phone.bytes = 100'000;
    board.weigh(phone);
    EXPECT_FALSE(phone.ending);
}

TEST_F(SwitchboardTest, FramesThatPassAreCountedAsTheyCome) {
    Switchboard small{{.frame = 1 << 20, .waiting = 1 << 20, .heldInAll = 5000}};
    small.connect(mac, seatOf(pair.mac, pair.phone));
    small.connect(phone, seatOf(pair.phone, pair.mac));
    const auto frame = pair.frame(pair.mac, pair.phone, 1, 1000);
    while (!phone.ending && phone.bytes < 10'000) small.receive(mac, frame);
    EXPECT_TRUE(phone.ending);
    EXPECT_LE(phone.bytes, 5000 + frame.size());
    EXPECT_FALSE(mac.ending);
    for (int count = 0; count < 3; ++count) small.receive(mac, pair.fromMac());
    EXPECT_FALSE(mac.ending) << "what the other held is no longer counted";
}

TEST_F(SwitchboardTest, TellsWhichPairsAreConnected) {
    EXPECT_TRUE(board.connectedPairs().empty());
    connectBoth();
    EXPECT_EQ(board.connectedPairs(), std::vector{pair.id});
    board.disconnect(mac);
    board.disconnect(phone);
    EXPECT_TRUE(board.connectedPairs().empty());
}
