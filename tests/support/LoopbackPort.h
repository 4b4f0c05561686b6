#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Require.h"

#include <chrono>
#include <cstdint>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>

namespace morvex {

inline sockaddr_in localAddress(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// A port of 127.0.0.1 on which nobody listens.
inline std::uint16_t freePort() {
    const FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    auto address = localAddress(0);
    socklen_t size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    require(::bind(socket.get(), generic, size) == 0 && ::getsockname(socket.get(), generic, &size) == 0,
            "a test gets no port");
    return ntohs(address.sin_port);
}

/// Waits for a server that a test has started; ends the test with `trouble` if it never listens.
inline void waitForListener(std::uint16_t port, const char* trouble) {
    const auto listens = [port] {
        const FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const auto address = localAddress(port);
        return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    };
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!listens()) {
        require(std::chrono::steady_clock::now() < giveUp, trouble);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

} // namespace morvex
