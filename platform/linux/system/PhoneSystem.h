#pragma once

#include "platform/linux/system/Basics.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "platform/posix/FileVault.h"
#include "platform/posix/HostLocalTime.h"

#include <filesystem>

namespace morvex {

/// What the system does for a phone on a terminal, under names that every system has.
struct PhoneSystem {
    /// `data`: where its secrets lie.
    explicit PhoneSystem(const std::filesystem::path& data) : vault(data) {}

    FileVault vault;
    SystemRandom random;
    CurlHttpClient http;
    HostLocalTime localTime;
    BeastWebSocketClient sockets;
};

} // namespace morvex
