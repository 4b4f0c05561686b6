#pragma once

#include "platform/ports/NetworkMonitor.h"
#include "platform/posix/base/FileDescriptor.h"

#include <QSocketNotifier>

#include <memory>
#include <utility>

namespace morvex {

/// Changes of addresses and routes as the kernel tells them (rtnetlink).
class NetlinkMonitor final : public NetworkMonitor {
  public:
    /// On a system that refuses the socket it tells nothing.
    NetlinkMonitor() : NetlinkMonitor(open()) {}

    /// For a socket whose other end is not the kernel.
    explicit NetlinkMonitor(FileDescriptor socket) : socket_(std::move(socket)) {}

    void watch(std::function<void()> changed) override;
    void unwatch() override;

    /// A socket that the kernel tells of addresses and routes, version 4 and 6; none where it refuses.
    static FileDescriptor open();

  private:
    void read();

    FileDescriptor socket_;
    std::unique_ptr<QSocketNotifier> readable_;
    std::function<void()> changed_;
};

} // namespace morvex
