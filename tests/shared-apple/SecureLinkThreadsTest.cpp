#include "foundation/OneShot.h"
#include "foundation/TaskScope.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "shared-apple/SecureLink.h"
#include "tests/shared-apple/LoopbackRelay.h"
#include "tests/support/Await.h"
#include "tests/support/Devices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

constexpr int messagesEach = 5'000;
constexpr int messagesBetweenRestarts = 500;

/// What a message under way when a session changes may lead to.
const std::vector<std::string> errorsOfARestart{
    "Zpráva dorazila dřív, než bylo spojení zabezpečené. Zopakuj to.",
    "Zprávu nejde ověřit: Zpráva není zašifrovaná pro tohle spojení, nebo ji někdo změnil.",
};

/// One device: a link on a thread of its own, and an application on another that sends numbered messages
/// until the peer has got enough of them, and restarts its link every so many received ones.
class Party {
  public:
    Party(const std::string& name, std::shared_ptr<const DeviceIdentity> identita, PairedPeer peer,
          DeviceRole role, Clock& clock, WebSocketClient& relay)
        : linkThread_(name + "-link"), application_(name) {
        link_ = SecureLink::create(std::move(identita), std::move(peer), role,
                                   {{linkThread_, clock, relay}, random_})
                    .value();
    }

    Executor& executor() { return application_; }

    Task<void> start(Party& peer) {
        listening_.spawn(listen());
        talking_.spawn(talk(peer));
        co_await link_->spustit();
    }

    Task<void> talked() { return talking_.join(); }

    Task<void> stop() {
        listening_.stop();
        co_await listening_.join();
        co_await link_->zastavit();
    }

    std::atomic<int> received = 0;
    int restarts = 0;
    bool inOrder = true;
    std::vector<std::string> unexpected;

  private:
    Task<void> talk(Party& peer) {
        for (int number = 1; peer.received < messagesEach; ++number) {
            const int before = sessions_;
            auto text = std::to_string(number);
            auto sent = co_await link_->poslat({MacPayload::ToolProgress{text}}, text);
            if (!sent && sessions_ == before) co_await nextSession();
        }
    }

    Task<void> listen() {
        while (auto event = co_await link_->udalosti().next(listening_.token())) {
            if (auto* message = std::get_if<SecureLink::Zprava>(&*event))
                take(*message);
            else if (auto* error = std::get_if<SecureLink::Chyba>(&*event))
                take(*error);
            else if (std::holds_alternative<SecureLink::Pripraveno>(*event))
                beginSession();
            if (received / messagesBetweenRestarts > restarts) {
                ++restarts;
                co_await link_->zastavit();
                co_await link_->spustit();
            }
        }
    }

    void take(const SecureLink::Zprava& message) {
        auto number = std::stoi(message.requestID);
        auto* progress = message.payload.as<MacPayload::ToolProgress>();
        inOrder = inOrder && progress && progress->text == message.requestID && number > lastNumber_;
        lastNumber_ = number;
        ++received;
    }

    void take(const SecureLink::Chyba& error) {
        if (std::ranges::find(errorsOfARestart, error.text.czech()) == errorsOfARestart.end())
            unexpected.push_back(error.text.czech());
    }

    void beginSession() {
        ++sessions_;
        if (auto waiting = std::exchange(waiting_, nullptr)) waiting->answer(true);
    }

    Task<void> nextSession() {
        auto shot = std::make_shared<OneShot<bool>>();
        waiting_ = shot;
        co_await shot->wait();
    }

    ThreadExecutor linkThread_;
    ThreadExecutor application_;
    ScriptedRandom random_;
    std::shared_ptr<SecureLink> link_;
    int sessions_ = 0;
    int lastNumber_ = 0;
    std::shared_ptr<OneShot<bool>> waiting_;
    TaskScope talking_{application_};
    TaskScope listening_{application_};
};

TEST(SecureLinkThreads, TwoDevicesExchangeTenThousandMessagesWhileTheirLinksAreRestarted) {
    ManualClock clock;
    test::LoopbackRelay relay;
    auto macIdentity = test::newIdentity();
    auto phoneIdentity = test::newIdentity();
    Party mac("mac", macIdentity, test::remembered(*phoneIdentity, DeviceRole::phone), DeviceRole::mac, clock,
              relay);
    Party phone("phone", phoneIdentity, test::remembered(*macIdentity, DeviceRole::mac), DeviceRole::phone,
                clock, relay);

    await(mac.executor(), mac.start(phone));
    await(phone.executor(), phone.start(mac));
    await(mac.executor(), mac.talked());
    await(phone.executor(), phone.talked());
    await(mac.executor(), mac.stop());
    await(phone.executor(), phone.stop());

    for (auto* party : {&mac, &phone}) {
        EXPECT_GE(party->received, messagesEach);
        EXPECT_GE(party->restarts, messagesEach / messagesBetweenRestarts - 1);
        EXPECT_TRUE(party->inOrder);
        EXPECT_EQ(party->unexpected, std::vector<std::string>{});
    }
}

} // namespace
} // namespace morvex
