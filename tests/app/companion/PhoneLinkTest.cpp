#include "app/link/PhoneLink.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedRandom.h"
#include "tests/support/ScriptedPhone.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace morvex {
namespace {

/// Links to a phone, each message of which is handled until the test says otherwise.
class PhoneLinkTest : public testing::Test {
  protected:
    PhoneLinkTest() {
        inbox.take<MacPayload::Cancel>(
            [this](const MacPayload::Cancel&, const Delivery&) { return handle(); });
    }

    ~PhoneLinkTest() override {
        link.odpojit();
        EXPECT_TRUE(executor.run(link.odpojeno()));
        EXPECT_TRUE(executor.run(scope.join()));
    }

    /// A link that has a session.
    std::shared_ptr<SecureLink> connect() {
        auto socket = sockets.layOut();
        auto made =
            SecureLink::create(mac, phone.asPeer(), DeviceRole::mac, {{executor, clock, sockets}, random});
        link.pripojit(made.value());
        executor.runUntilIdle();
        phone.attach(std::move(socket), *mac);
        phone.logIn();
        executor.runUntilIdle();
        phone.exchangeHellos();
        executor.runUntilIdle();
        return *std::move(made);
    }

    void sendMessage() {
        phone.send({MacPayload::Cancel{}}, "r");
        executor.runUntilIdle();
    }

    Task<void> handle() {
        ++handled;
        co_await handling->wait();
    }

    static Task<void> ignore() { co_return; }

    /// Whether nothing of this link waits, nor is held by anybody.
    bool isEmpty(const std::shared_ptr<SecureLink>& of) { return executor.run(room(of)); }

    static Task<void> room(std::shared_ptr<SecureLink> of) { co_await of->udalosti().room(1, {}); }

    ManualExecutor executor;
    ManualClock clock;
    ScriptedRandom random;
    ScriptedSockets sockets;
    ScriptedPhone phone{clock};
    std::shared_ptr<const DeviceIdentity> mac =
        std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    int handled = 0;
    std::shared_ptr<OneShot<bool>> handling = std::make_shared<OneShot<bool>>();
    TaskScope scope{executor};
    PhoneInbox inbox;
    PhoneLink link{executor, scope, inbox,
                   [](const std::shared_ptr<SecureLink>&, const SecureLink::Udalost&) { return ignore(); }};
};

TEST_F(PhoneLinkTest, WhatWaitsAtTheEndOfALinkIsNotKeptBeyondTheLink) {
    auto old = connect();
    for (int i = 0; i < 3; ++i) sendMessage();
    EXPECT_EQ(handled, 1);
    EXPECT_FALSE(isEmpty(old));
    link.odpojit();
    handling->answer(true);
    executor.runUntilIdle();
    EXPECT_EQ(handled, 1);
    EXPECT_TRUE(isEmpty(old)) << "what is held counts in a stream that goes with its link";
}

} // namespace
} // namespace morvex
