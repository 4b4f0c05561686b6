#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Sentence.h"

#include <cstdint>
#include <optional>
#include <string>

namespace morvex {

/// Status codes of a vault, the same on every system. Any other non-zero value is a refusal, too.
namespace vaultStatus {
constexpr std::int32_t ok = 0;
constexpr std::int32_t itemNotFound = -25300;
constexpr std::int32_t interactionNotAllowed = -25308; ///< the vault is locked and nobody unlocked it
constexpr std::int32_t userCanceled = -128;            ///< the user closed the prompt
constexpr std::int32_t notAvailable = -25291;          ///< the vault chosen at first cannot be reached
constexpr std::int32_t duplicateItem = -25299;
constexpr std::int32_t io = -36;
/// An errno of the system is reported as `posixBase` + errno.
constexpr std::int32_t posixBase = 100'000;
} // namespace vaultStatus

/// Generic passwords by service and account. Calls may block (a prompt, a bus): never on the main thread.
class SecretVault {
  public:
    struct Found {
        std::int32_t status = vaultStatus::ok;
        Bytes bytes; ///< meaningful with status 0
    };

    virtual ~SecretVault() = default;

    virtual Found find(const std::string& service, const std::string& account) = 0;
    /// Returns `itemNotFound` when the item does not exist.
    virtual std::int32_t update(const std::string& service, const std::string& account, ByteView bytes) = 0;
    /// Returns `duplicateItem` when the item exists.
    virtual std::int32_t add(const std::string& service, const std::string& account, ByteView bytes) = 0;
    /// Returns `itemNotFound` when the item does not exist.
    virtual std::int32_t remove(const std::string& service, const std::string& account) = 0;

    enum class Place { keyring, privateFiles };

    /// Where the items are stored.
    [[nodiscard]] virtual Place place() = 0;

    /// A call that waits for the user returns `interactionNotAllowed`. From any thread; never blocks.
    virtual void stopAsking() = 0;
    /// Like `stopAsking`, but lasting, for the end of the program: later calls do not ask the user, and none
    /// takes longer than two seconds.
    virtual void end() = 0;

    /// The platform's words for a status, if there are any.
    [[nodiscard]] virtual std::optional<Sentence> text(std::int32_t status) const = 0;
};

} // namespace morvex
