#include "platform/linux/HostnamedName.h"

#include "tests/support/BusService.h"
#include "tests/support/PrivateBus.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string_view>

namespace morvex {
namespace {

/// Answers every property that is asked for with `value`.
BusService::Answer propertyOf(const char* expected, GVariant* value) {
    std::shared_ptr<GVariant> held(g_variant_ref_sink(value), g_variant_unref);
    return [expected, held](GDBusMessage* call) {
        const char* interface = nullptr;
        const char* property = nullptr;
        g_variant_get(g_dbus_message_get_body(call), "(&s&s)", &interface, &property);
        if (std::string_view(property) != expected)
            return g_dbus_message_new_method_error(call, "org.example.Unknown", "%s", property);
        auto* reply = g_dbus_message_new_method_reply(call);
        g_dbus_message_set_body(reply, g_variant_new("(v)", held.get()));
        return reply;
    };
}

class HostnamedNameTest : public testing::Test {
  protected:
    void writeMachineInfo(std::string_view text) { std::ofstream(sources_.machineInfo) << text; }

    void writeNetworkName(std::string_view text) { std::ofstream(sources_.networkName) << text; }

    std::string nameWith(BusService::Answer answer) {
        PrivateBus bus;
        BusService hostnamed(bus.address(), "org.freedesktop.hostname1", std::move(answer));
        sources_.systemBus = bus.address();
        return name();
    }

    std::string name() { return HostnamedName(sources_).name(); }

    TemporaryFolder folder_;
    HostnamedName::Sources sources_{.systemBus = "",
                                    .machineInfo = folder_.path() / "machine-info",
                                    .networkName = folder_.path() / "hostname"};
};

TEST_F(HostnamedNameTest, ThePrettyNameOfTheServiceComesFirst) {
    writeMachineInfo("PRETTY_HOSTNAME=file\n");
    EXPECT_EQ(nameWith(propertyOf("PrettyHostname", g_variant_new_string(" Janin počítač "))),
              "Janin počítač");
}

TEST_F(HostnamedNameTest, WithoutAPrettyNameOnTheBusTheFileCounts) {
    writeMachineInfo("PRETTY_HOSTNAME=file\n");
    EXPECT_EQ(nameWith(propertyOf("PrettyHostname", g_variant_new_string(""))), "file");
    EXPECT_EQ(nameWith(propertyOf("PrettyHostname", g_variant_new_int32(7))), "file");
    EXPECT_EQ(nameWith(propertyOf("SomethingElse", g_variant_new_string("wrong"))), "file");
}

TEST_F(HostnamedNameTest, AServiceThatNeverAnswersIsNotWaitedFor) {
    writeMachineInfo("PRETTY_HOSTNAME=file\n");
    EXPECT_EQ(nameWith(&BusService::silence), "file");
}

TEST_F(HostnamedNameTest, ABusWithoutTheServiceOrNoBusIsNoObstacle) {
    writeMachineInfo("PRETTY_HOSTNAME=file\n");
    PrivateBus bus;
    sources_.systemBus = bus.address();
    EXPECT_EQ(name(), "file");
    sources_.systemBus = "unix:path=/nonexistent/bus";
    EXPECT_EQ(name(), "file");
}

TEST_F(HostnamedNameTest, ReadsTheQuotingOfTheFile) {
    writeNetworkName("network\n");
    const std::pair<const char*, const char*> cases[] = {
        {"# PRETTY_HOSTNAME=comment\nICON_NAME=x\nPRETTY_HOSTNAME=\"Jana's \\\"box\\\"\"\n",
         "Jana's \"box\""},
        {"PRETTY_HOSTNAME='two words'", "two words"},
        {"PRETTY_HOSTNAME=first\nPRETTY_HOSTNAME=last\n", "last"},
        {"PRETTY_HOSTNAME=\n", "network"},
        {"PRETTY_HOSTNAME=\"never closed\n", "network"},
        {"", "network"},
    };
    for (const auto& [text, expected] : cases) {
        writeMachineInfo(text);
        EXPECT_EQ(name(), expected) << text;
    }
}

TEST_F(HostnamedNameTest, IsMacWhenNobodyNamedTheComputer) {
    EXPECT_EQ(name(), "Mac");
    writeNetworkName("(none)\n");
    EXPECT_EQ(name(), "Mac");
    writeNetworkName(" \n");
    EXPECT_EQ(name(), "Mac");
}

TEST_F(HostnamedNameTest, TheKernelTellsTheNetworkName) {
    sources_.networkName = HostnamedName::Sources().networkName;
    char kernel[256] = {};
    ASSERT_EQ(::gethostname(kernel, sizeof kernel - 1), 0);
    EXPECT_EQ(name(), kernel);
}

} // namespace
} // namespace morvex
