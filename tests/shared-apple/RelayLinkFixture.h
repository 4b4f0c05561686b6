#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedSockets.h"
#include "shared-apple/RelayLink.h"
#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace morvex::test {

inline Task<void> collect(RelayLink& link, std::vector<RelayLink::Udalost>& seen, std::stop_token stop) {
    while (auto event = co_await link.udalosti().next(stop)) seen.push_back(*std::move(event));
}

inline std::string challenge(std::string version = "1.4") {
    return encode(RelayMessage{RelayMessage::Challenge{toBytes("výzva"), *ProtocolVersion::parse(version)}});
}

template <class Case> std::string frame(Case content) {
    return encode(RelayMessage{std::move(content)});
}

/// A link of the computer whose relay is the test.
class RelayLinkFixture : public testing::Test {
  protected:
    using Udalost = RelayLink::Udalost;

    RelayLinkFixture() { executor.start(collect(link, events, listening.get_token())); }

    ~RelayLinkFixture() override {
        EXPECT_TRUE(executor.run(link.stop()));
        listening.request_stop();
        executor.runUntilIdle();
    }

    /// A link that is logged in.
    std::shared_ptr<ScriptedSocket> logIn() {
        auto socket = sockets.layOut();
        executor.start(link.start());
        executor.runUntilIdle();
        socket->deliver(challenge());
        socket->deliver(frame(RelayMessage::Authenticated{true}));
        executor.runUntilIdle();
        return socket;
    }

    std::vector<Udalost> takeEvents() {
        executor.runUntilIdle();
        noteLogin();
        return std::exchange(events, {});
    }

    void pass(Clock::Duration time) {
        clock.advance(time);
        executor.runUntilIdle();
    }

    /// In the name of the last login that was told.
    Result<void> send(Envelope envelope) {
        executor.runUntilIdle();
        noteLogin();
        return executor.run(link.send(std::move(envelope), login)).value();
    }

    Envelope envelope() {
        return keyExchange({"PAIR"}, identita->deviceID(), {"PHONE"}, "session", toBytes("hello"),
                           clock.now(), {});
    }

    void noteLogin() {
        for (const auto& event : events)
            if (const auto* told = std::get_if<RelayLink::Prihlaseno>(&event)) login = told->login;
    }

    ManualExecutor executor;
    ManualClock clock;
    ScriptedSockets sockets;
    std::shared_ptr<const DeviceIdentity> identita =
        std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    RelayLink link{
        *RelayAddress::parse("https://relay.example/base"), identita, {"PAIR"}, {executor, clock, sockets}};
    std::vector<Udalost> events;
    RelayLink::Login login; ///< the last one that was told
    std::stop_source listening;
};

} // namespace morvex::test
