#include "platform/linux/NetlinkMonitor.h"

#include "platform/posix/base/Uninterrupted.h"

#include <array>
#include <cerrno>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <utility>

namespace morvex {

namespace {

constexpr unsigned groups = RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;

} // namespace

FileDescriptor NetlinkMonitor::open() {
    FileDescriptor opened(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE));
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = groups;
    if (!opened || ::bind(opened.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return {};
    return opened;
}

Connection NetlinkMonitor::onChange(std::function<void()> slot) {
    if (socket_ && !readable_) {
        readable_ = std::make_unique<QSocketNotifier>(socket_.get(), QSocketNotifier::Read);
        QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(), [this] { read(); });
    }
    return changes_.connect(std::move(slot));
}

void NetlinkMonitor::read() {
    // Any message means a change. Neither its content matters nor whether some were lost (ENOBUFS).
    constexpr int mostAtOnce = 64;
    std::array<char, 64> beginning{};
    bool isNews = false;
    for (int message = 0; message < mostAtOnce; ++message) {
        const auto size =
            uninterrupted([&] { return ::recv(socket_.get(), beginning.data(), beginning.size(), 0); });
        if (size < 0 && errno == EAGAIN) break;
        isNews = true;
        if (size > 0 || errno == ENOBUFS) continue;
        readable_->setEnabled(false);
        break;
    }
    if (isNews) changes_.tell();
}

} // namespace morvex
