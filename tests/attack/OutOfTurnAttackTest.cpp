#include "tests/attack/AttackedCompanion.h"

#include <string>
#include <vector>

namespace morvex {
namespace {

/// Frames that a relay sends when nobody waits for them.
class OutOfTurnAttack : public AttackedCompanion {
  protected:
    OutOfTurnAttack() { tries = 0; }

    /// One frame of each case.
    std::vector<RelayMessage> frames() {
        return {{RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current}},
                {RelayMessage::Authenticate{
                    {"PAIR"}, phone.identita->deviceID(), phone.identita->signingKey(), {}}},
                {RelayMessage::Authenticated{true}},
                {RelayMessage::PeerOnline{true}},
                {RelayMessage::Forward{phone.newHello()}},
                {RelayMessage::Failure{RelayFailure::rateLimited, "Moc rychle."}}};
    }

    std::vector<RelayMessage> framesBut(std::size_t left) {
        auto all = frames();
        std::erase_if(all, [left](const RelayMessage& frame) { return frame.value.index() == left; });
        return all;
    }

    /// Frames that are allowed only before the login.
    static std::vector<RelayMessage> loginFrames() {
        return {{RelayMessage::Challenge{toBytes("jiná výzva"), ProtocolVersion::current}},
                {RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion{2, 0}}},
                {RelayMessage::Authenticate{{"PAIR"}, {"MAC"}, {}, {}}},
                {RelayMessage::Authenticated{true}},
                {RelayMessage::Authenticated{false}}};
    }

    /// Takes the companion's hello and answers it as the phone.
    void meetOn(HostileRelay::Line& line) {
        auto message = line.receive();
        ASSERT_TRUE(message) << "the line has ended";
        const auto* hello = message->as<RelayMessage::Forward>();
        ASSERT_TRUE(hello) << "something else than a hello was said";
        phoneClock.setWallClock(mac->clock().now());
        auto own = phone.newHello();
        phone.meet(*identity, hello->envelope);
        forward(line, std::move(own));
    }

    /// The frame must not affect the line: it still serves, and nothing was signed.
    void expectUnmoved(HostileRelay::Line& line, const RelayMessage& frame) {
        EXPECT_TRUE(isServed(line)) << frame.value.index();
        EXPECT_EQ(signatures, 0U) << frame.value.index();
        ++tries;
    }
};

TEST_F(OutOfTurnAttack, BeforeTheLoginItLogsNobodyIn) {
    for (auto& frame : framesBut(0)) {
        auto line = connect();
        line->send(frame);
        EXPECT_FALSE(line->receive()) << "nothing is answered";
        ++tries;
    }
    for (auto& frame : framesBut(2)) {
        auto line = connect();
        line->say(RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current});
        EXPECT_TRUE(line->receive());
        line->send(frame);
        EXPECT_FALSE(line->receive()) << "nothing but the one login is sent";
        ++tries;
    }
}

TEST_F(OutOfTurnAttack, AfterTheLoginNothingIsSigned) {
    for (const auto& frame : loginFrames()) {
        auto line = logIn(false);
        line->send(frame);
        line->say(RelayMessage::PeerOnline{true});
        meetOn(*line);
        expectUnmoved(*line, frame);
    }
    counted = "nothing signed, a session afterwards";
}

TEST_F(OutOfTurnAttack, BehindTheHelloNothingIsSigned) {
    for (const auto& frame : loginFrames()) {
        auto line = logIn();
        line->send(frame);
        meetOn(*line);
        expectUnmoved(*line, frame);
    }
    counted = "nothing signed, a session afterwards";
}

TEST_F(OutOfTurnAttack, InASessionNothingIsSignedAndTheSessionStands) {
    for (const auto& frame : loginFrames()) {
        auto line = secure();
        EXPECT_TRUE(isServed(*line));
        line->send(frame);
        expectUnmoved(*line, frame);
    }
    counted = "nothing signed, the session stands";
}

} // namespace
} // namespace morvex
