#include "platform/linux/NetlinkMonitor.h"

#include "tests/platform/linux/MainLoopTest.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/rtnetlink.h>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace morvex {
namespace {

class NetlinkMonitorTest : public MainLoopTest {
  protected:
    NetlinkMonitorTest() {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()), 0);
        here_ = FileDescriptor(ends[0]);
        kernel = FileDescriptor(ends[1]);
    }

    NetlinkMonitor monitorOfTheTest() { return NetlinkMonitor(std::move(here_)); }

    void send(std::string_view message) const {
        EXPECT_EQ(::send(kernel.get(), message.data(), message.size(), 0),
                  static_cast<ssize_t>(message.size()));
    }

    /// The monitor has its turns with whatever was sent before: the loop looks at all descriptors at once,
    /// and does so twice.
    static void runLoop() {
        for (int turn = 0; turn < 2; ++turn) {
            std::array<int, 2> ends{};
            ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
            const FileDescriptor later(ends[0]);
            const FileDescriptor end(ends[1]);
            ASSERT_EQ(::write(end.get(), "x", 1), 1);
            QSocketNotifier notifier(later.get(), QSocketNotifier::Read);
            QEventLoop loop;
            QObject::connect(&notifier, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
            loop.exec();
        }
    }

    FileDescriptor kernel;
    int changes = 0;

  private:
    FileDescriptor here_;
};

TEST_F(NetlinkMonitorTest, TheKernelTellsItOfAddressesAndRoutes) {
    const auto opened = NetlinkMonitor::open();
    ASSERT_TRUE(opened);
    sockaddr_nl address{};
    socklen_t size = sizeof address;
    ASSERT_EQ(::getsockname(opened.get(), reinterpret_cast<sockaddr*>(&address), &size), 0);
    constexpr unsigned expected =
        RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    EXPECT_EQ(address.nl_groups, expected);
    EXPECT_TRUE(::fcntl(opened.get(), F_GETFL) & O_NONBLOCK);
}

TEST_F(NetlinkMonitorTest, WhateverComesIsAChange) {
    auto monitor = monitorOfTheTest();
    const auto watching = monitor.onChange([this] { ++changes; });
    runLoop();
    EXPECT_EQ(changes, 0);
    for (const auto message :
         {std::string_view("x"), std::string_view("a message that is longer than what is read of it, "
                                                  "since nobody looks into it at all")}) {
        const auto before = changes;
        send(message);
        EXPECT_TRUE(eventually([&] { return changes > before; }));
    }
}

TEST_F(NetlinkMonitorTest, WhatComesTogetherIsTakenTogether) {
    auto monitor = monitorOfTheTest();
    for (int message = 0; message < 50; ++message) send("x");
    const auto watching = monitor.onChange([this] { ++changes; });
    EXPECT_TRUE(eventually([&] { return changes > 0; }));
    runLoop();
    EXPECT_EQ(changes, 1);
}

TEST_F(NetlinkMonitorTest, AfterTheEndOfTheWatchNothingIsTold) {
    auto monitor = monitorOfTheTest();
    auto watching = monitor.onChange([this] { ++changes; });
    watching = {};
    send("x");
    runLoop();
    EXPECT_EQ(changes, 0);
    watching = monitor.onChange([this] { ++changes; });
    send("x");
    EXPECT_TRUE(eventually([&] { return changes > 0; })) << "it can be watched again";
}

TEST_F(NetlinkMonitorTest, ASocketThatEndsIsLeft) {
    auto monitor = monitorOfTheTest();
    const auto watching = monitor.onChange([this] { ++changes; });
    kernel = FileDescriptor();
    EXPECT_TRUE(eventually([&] { return changes > 0; }));
    runLoop();
    EXPECT_EQ(changes, 1) << "a loop would never rest";
}

TEST_F(NetlinkMonitorTest, WithoutASocketItTellsNothing) {
    NetlinkMonitor monitor{FileDescriptor()};
    const auto watching = monitor.onChange([this] { ++changes; });
    runLoop();
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace morvex
