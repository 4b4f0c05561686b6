#pragma once

#include "platform/ports/NetworkMonitor.h"
#include "platform/posix/base/FileDescriptor.h"

#include <QSocketNotifier>

#include <memory>
#include <utility>

namespace morvex {

/// Changes of addresses and routes reported by the kernel (rtnetlink).
class NetlinkMonitor final : public NetworkMonitor {
  public:
    /// Reports nothing if the system refuses the socket.
    NetlinkMonitor() : NetlinkMonitor(open()) {}

    /// Takes a socket whose other end is not the kernel (for tests).
    explicit NetlinkMonitor(FileDescriptor socket) : socket_(std::move(socket)) {}

    Connection onChange(std::function<void()> slot) override;

    /// A socket that receives the kernel's messages on IPv4 and IPv6 addresses and routes; invalid if the
    /// system refuses it.
    static FileDescriptor open();

  private:
    void read();

    FileDescriptor socket_;
    std::unique_ptr<QSocketNotifier> readable_;
    Signal<> changes_;
};

} // namespace morvex
