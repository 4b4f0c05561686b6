#include "platform/linux/SecretServicePrompt.h"

#include "tests/support/BusService.h"
#include "tests/support/PrivateBus.h"

#include <gtest/gtest.h>

#include <string_view>
#include <thread>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using End = SecretServicePrompt::End;

constexpr const char* path = "/org/freedesktop/secrets/prompt/p1";

GVariant* completed(bool dismissed) {
    return g_variant_new("(bv)", dismissed ? TRUE : FALSE, g_variant_new_string("result"));
}

class SecretServicePromptTest : public testing::Test {
  protected:
    void SetUp() override { g_main_context_push_thread_default(context_.get()); }

    void TearDown() override {
        while (g_main_context_iteration(context_.get(), FALSE)) {
        }
        g_main_context_pop_thread_default(context_.get());
    }

    /// A service that answers the call of the prompt, after a signal if one is given.
    std::unique_ptr<BusService> service(GVariant* signal, const char* signalPath = path) {
        std::shared_ptr<GVariant> held(signal ? g_variant_ref_sink(signal) : nullptr,
                                       [](GVariant* value) { g_clear_pointer(&value, g_variant_unref); });
        auto answer = [this, held, signalPath](GDBusMessage* call) {
            called_.emplace_back(g_dbus_message_get_member(call));
            if (held)
                g_dbus_connection_emit_signal(service_->connection(), nullptr, signalPath,
                                              "org.freedesktop.Secret.Prompt", "Completed", held.get(),
                                              nullptr);
            return g_dbus_message_new_method_reply(call);
        };
        return std::make_unique<BusService>(bus_.address(), "org.freedesktop.secrets", answer);
    }

    End run(std::chrono::milliseconds limit, const std::stop_token& stop = {}) {
        auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                       G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        GLibHandle<GDBusConnection> connection(
            g_dbus_connection_new_for_address_sync(bus_.address().c_str(), flags, nullptr, nullptr, nullptr));
        CallDeadline deadline(limit);
        auto end = SecretServicePrompt(connection.get(), path).run(deadline, stop);
        g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
        return end;
    }

    PrivateBus bus_;
    GLibHandle<GMainContext, g_main_context_unref> context_{g_main_context_new()};
    std::vector<std::string> called_;
    std::unique_ptr<BusService> service_;
};

TEST_F(SecretServicePromptTest, EndsWithTheUsersConsent) {
    service_ = service(completed(false));
    EXPECT_EQ(run(1min), End::agreed);
    service_.reset();
    EXPECT_THAT(called_, testing::ElementsAre("Prompt"));
}

TEST_F(SecretServicePromptTest, EndsWhenItIsClosed) {
    service_ = service(completed(true));
    EXPECT_EQ(run(1min), End::dismissed);
}

TEST_F(SecretServicePromptTest, EndsWithTheTimeAndTellsTheServiceNothingMore) {
    service_ = service(nullptr);
    EXPECT_EQ(run(100ms), End::unanswered);
    service_.reset();
    EXPECT_THAT(called_, testing::ElementsAre("Prompt"));
}

TEST_F(SecretServicePromptTest, DoesNotTakeTheEndOfAnotherPromptForItsOwn) {
    service_ = service(completed(false), "/org/freedesktop/secrets/prompt/p2");
    EXPECT_EQ(run(100ms), End::unanswered);
}

TEST_F(SecretServicePromptTest, DoesNotTakeASignalOfAnotherFormForAnEnd) {
    service_ = service(g_variant_new("(s)", "agreed"));
    EXPECT_EQ(run(100ms), End::unanswered);
}

TEST_F(SecretServicePromptTest, EndsWhenTheServiceDoes) {
    service_ = service(nullptr);
    std::thread ending([this] {
        service_->waitForCall();
        service_.reset();
    });
    EXPECT_EQ(run(1min), End::vanished);
    ending.join();
}

TEST_F(SecretServicePromptTest, EndsAtOnceWhenNobodyIsToBeAskedAnyMore) {
    service_ = service(nullptr);
    std::stop_source stop;
    std::thread stopping([this, &stop] {
        service_->waitForCall();
        stop.request_stop();
    });
    EXPECT_EQ(run(1h, stop.get_token()), End::unanswered);
    stopping.join();
    EXPECT_EQ(run(1h, stop.get_token()), End::unanswered) << "a stop before the question counts too";
}

TEST_F(SecretServicePromptTest, WithoutTheServiceItIsNotAsked) {
    EXPECT_EQ(run(1min), End::vanished);
}

} // namespace
} // namespace morvex
