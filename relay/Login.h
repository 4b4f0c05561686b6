#pragma once

#include "relay/PairStore.h"
#include "shared/wire/RelayMessage.h"

#include <optional>
#include <string_view>
#include <variant>

namespace morvex {

/// Whom a socket speaks for.
struct Seat {
    PairID pair;
    DeviceID device;
    std::optional<DeviceID> peer; ///< nothing while nobody has joined the pair
    Date tokenEnd{};              ///< of the pair's token, hence minutes after the pair was made

    bool operator==(const Seat&) const = default;
};

using LoginAnswer = std::variant<Seat, RelayFailure>;

/// One socket's login. Owned by the session, on the relay's thread.
class Login {
  public:
    /// 32 fresh random bytes for the device to sign. `clientVersion` is what the device gave in its address.
    static Login start(std::string_view clientVersion);
    Login(Bytes nonce, std::string_view clientVersion);

    /// The first frame of the socket.
    [[nodiscard]] std::string challenge() const;

    /// The device's answer. Only a member of the pair learns whether it was revoked. Fails when the store
    /// does: then nothing true can be said to the device, which tries again.
    [[nodiscard]] Result<LoginAnswer> answer(PairStore& store, std::string_view frame) const;

  private:
    [[nodiscard]] Result<LoginAnswer> check(PairStore& store, const RelayMessage::Authenticate& given) const;

    Bytes nonce_;
    bool isCompatible_;
};

} // namespace morvex
