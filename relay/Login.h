#pragma once

#include "relay/PairStore.h"
#include "shared/wire/RelayMessage.h"

#include <optional>
#include <string_view>
#include <variant>

namespace morvex {

/// The device that a socket belongs to, and its pair.
struct Seat {
    PairID pair;
    DeviceID device;
    std::optional<DeviceID> peer; ///< nothing while nobody has joined the pair
    Date tokenEnd{};              ///< when the pair's token expires, minutes after the pair was made

    bool operator==(const Seat&) const = default;
};

using LoginAnswer = std::variant<Seat, RelayFailure>;

/// The login of one socket. Owned by the session, on the relay's thread.
class Login {
  public:
    /// Draws 32 random bytes for the device to sign. `clientVersion` is the version in the address that the
    /// device requested.
    static Login start(std::string_view clientVersion);
    Login(Bytes nonce, std::string_view clientVersion);

    /// The first frame of the socket.
    [[nodiscard]] std::string challenge() const;

    /// Checks the device's answer. Only a member of the pair learns whether the pair was revoked. Fails if
    /// the store fails: nothing certain can be said to the device then, and it tries again.
    [[nodiscard]] Result<LoginAnswer> answer(PairStore& store, std::string_view frame) const;

  private:
    [[nodiscard]] Result<LoginAnswer> check(PairStore& store, const RelayMessage::Authenticate& given) const;

    Bytes nonce_;
    bool isCompatible_;
};

} // namespace morvex
