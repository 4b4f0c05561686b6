#include "app/features/Feature.h"

#include "foundation/OneShot.h"
#include "foundation/TaskScope.h"
#include "shared-apple/KeychainChyba.h"
#include "shared/wire/Json.h"
#include "tests/support/CompanionHarness.h"

#include <memory>
#include <string>
#include <vector>

namespace morvex {
namespace {

using Lines = std::vector<std::string>;

/// A subsystem that the companion has never heard of, which notes what it is told.
class MadeUpFeature final : public Feature {
  public:
    MadeUpFeature(FeatureContext& context, Lines& told, std::shared_ptr<OneShot<bool>> prepared)
        : Feature(context), scope_(context.scope), told_(told), prepared_(std::move(prepared)) {
        context.inbox.take<MacPayload::Cancel>(
            [this](const MacPayload::Cancel&, const Delivery&) { return note("message"); });
    }

    Task<void> load() override { return note("load"); }

    Task<void> prepare() override {
        told_.emplace_back("prepare");
        if (prepared_) co_await prepared_->wait();
    }

    void addTo(MacStatus& status) const override { status.deviceName += " with more"; }

    void addTo(boost::json::object& answer) const override { answer["busy"] = "made up"; }

    void switched() override { told_.emplace_back("switched"); }

    Task<void> refresh() override { return note("refresh"); }

    Task<void> catchUp(std::shared_ptr<SecureLink> link) override {
        return note(link ? "catch up" : "catch up with nobody");
    }

    Task<void> settled() override { return note("settled"); }

    void sleep() override { told_.emplace_back("sleep"); }

    void stop() override {
        told_.emplace_back(scope_.token().stop_requested() ? "stop behind its tasks" : "stop");
    }

    Task<void> saved() override { return note(scope_.live() == 0 ? "saved" : "saved before its tasks"); }

  private:
    Task<void> note(std::string what) {
        told_.push_back(std::move(what));
        co_return;
    }

    TaskScope& scope_;
    Lines& told_;
    std::shared_ptr<OneShot<bool>> prepared_; ///< what its preparation waits for, if anything
};

/// Ends some time after it was to.
Task<void> linger(Clock* clock, std::stop_token stop) {
    (void)co_await sleepFor(*clock, std::chrono::hours(1), stop);
    for (int hop = 0; hop < 10; ++hop) co_await letOthersRun();
}

class FeatureTest : public CompanionHarness {
  protected:
    ~FeatureTest() override {
        if (companion) endAll();
    }

    void startAll() {
        mac = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
        (void)store.held.ulozIdentitu(mac);
        (void)store.held.ulozProtejsek(phone.asPeer());
        auto socket = sockets.layOut();
        companion = std::make_unique<Companion>(services());
        features = std::make_unique<Features>(*companion);
        madeUp = std::make_unique<MadeUpFeature>(companion->context(), told, prepared);
        executor.start(companion->spustit());
        executor.runUntilIdle();
        phone.attach(socket, *mac);
    }

    void connect() {
        phone.logIn();
        executor.runUntilIdle();
        phone.exchangeHellos();
        executor.runUntilIdle();
    }

    void endAll() {
        EXPECT_TRUE(executor.run(companion->shutDown()));
        madeUp.reset();
        features.reset();
        companion.reset();
    }

    /// Since it was asked last.
    Lines news() { return std::exchange(told, {}); }

    Lines told;
    std::shared_ptr<OneShot<bool>> prepared;
    std::unique_ptr<MadeUpFeature> madeUp;
};

/// A slow desktop looks like no keyring that waits for a person.
TEST_F(FeatureTest, PreparesWithTheKeysThereBeforeThePhoneIsConnected) {
    prepared = std::make_shared<OneShot<bool>>();
    startAll();
    EXPECT_EQ(news(), (Lines{"load", "prepare"}));
    EXPECT_FALSE(companion->stav().areKeysLoading());
    EXPECT_TRUE(companion->stav().protejsek.value().has_value());
    EXPECT_EQ(sockets.urls.size(), 0U);
    prepared->answer(true);
    executor.runUntilIdle();
    EXPECT_EQ(news(), Lines{"refresh"});
    EXPECT_EQ(sockets.urls.size(), 1U);
    connect();
    EXPECT_EQ(news(), Lines{"catch up"});
}

TEST_F(FeatureTest, TheEndDuringThePreparationConnectsNobody) {
    prepared = std::make_shared<OneShot<bool>>();
    startAll();
    EXPECT_TRUE(executor.run(companion->shutDown()));
    news();
    prepared->answer(true);
    executor.runUntilIdle();
    EXPECT_EQ(news(), Lines());
    EXPECT_EQ(sockets.urls.size(), 0U);
    madeUp.reset();
    features.reset();
    companion.reset();
}

TEST_F(FeatureTest, HearsOfTheStartAndOfEachSession) {
    startAll();
    EXPECT_EQ(news(), (Lines{"load", "prepare", "refresh"}));
    connect();
    EXPECT_EQ(news(), Lines{"catch up"});
}

TEST_F(FeatureTest, IsLoadedOnceHoweverOftenThePhoneIsReadInVain) {
    store.failPeerLoad =
        Error(KeychainChyba{vaultStatus::userCanceled, KeychainChyba::Pokus::reading, "", {}});
    startAll();
    companion->tryAgain();
    executor.runUntilIdle();
    EXPECT_EQ(news(), Lines{"load"});
}

TEST_F(FeatureTest, IsAskedForItsPartOfTheStatus) {
    startAll();
    connect();
    const auto statuses = takeStatuses();
    ASSERT_FALSE(statuses.empty());
    EXPECT_TRUE(statuses.back().deviceName.ends_with(" with more"));
    const auto answer = call("mac.status", "{}");
    EXPECT_TRUE(answer.json.ends_with(R"("folders":[],"busy":"made up"})")) << answer.json;
}

TEST_F(FeatureTest, IsSettledBeforeEachCallAndTakesItsMessages) {
    startAll();
    connect();
    (void)news();
    EXPECT_TRUE(call("mac.status", "{}").ok);
    EXPECT_EQ(news(), Lines{"settled"});
    phone.send({MacPayload::Cancel{}}, "req-2");
    executor.runUntilIdle();
    EXPECT_EQ(news(), Lines{"message"});
}

TEST_F(FeatureTest, HearsOfSwitchesAndOfARefreshBeforeTheStatusGoesOut) {
    startAll();
    connect();
    (void)takeStatuses();
    (void)news();
    companion->integrations().turnOff(Integration::terminal);
    EXPECT_EQ(news(), Lines{"switched"});
    EXPECT_EQ(takeStatuses().size(), 1U);
    companion->obnovit();
    executor.runUntilIdle();
    EXPECT_EQ(news(), Lines{"refresh"});
    EXPECT_EQ(takeStatuses().size(), 1U);
}

TEST_F(FeatureTest, HearsOfTheSleepAndOfTheEnd) {
    startAll();
    connect();
    (void)news();
    FakeDesktop::sleep.fallAsleep();
    executor.runUntilIdle();
    EXPECT_EQ(news(), Lines{"sleep"});
    auto& scope = companion->context().scope;
    scope.spawn(linger(&clock, scope.token()));
    endAll();
    EXPECT_EQ(news(), (Lines{"stop", "saved"}));
}

/// What is not taken is ignored, so each kind is named here.
TEST_F(FeatureTest, TheProgramTakesTheseMessagesOfThePhone) {
    make();
    const auto& inbox = companion->context().inbox;
    EXPECT_TRUE(inbox.takes<MacPayload::ToolCall>());
    EXPECT_TRUE(inbox.takes<MacPayload::ApprovalDecision>());
    EXPECT_TRUE(inbox.takes<MacPayload::WorkItemAck>());
    EXPECT_TRUE(inbox.takes<MacPayload::NoteUpdate>());
    EXPECT_TRUE(inbox.takes<MacPayload::SummaryUpdate>());
    EXPECT_TRUE(inbox.takes<MacPayload::OpenAICredential>());
    EXPECT_TRUE(inbox.takes<MacPayload::Preferences>());
    EXPECT_TRUE(inbox.takes<MacPayload::CustomApps>());
    EXPECT_FALSE(inbox.takes<MacPayload::Status>());
    EXPECT_FALSE(inbox.takes<MacPayload::ToolProgress>());
    EXPECT_FALSE(inbox.takes<MacPayload::ToolResult>());
    EXPECT_FALSE(inbox.takes<MacPayload::WorkItemUpdate>());
    EXPECT_FALSE(inbox.takes<MacPayload::NoteAck>());
    EXPECT_FALSE(inbox.takes<MacPayload::SummaryAck>());
    EXPECT_FALSE(inbox.takes<MacPayload::Cancel>());
    EXPECT_FALSE(inbox.takes<MacPayload::Approval>());
    static_assert(std::variant_size_v<decltype(MacPayload::value)> == 16, "each kind stands above");
}

} // namespace
} // namespace morvex
