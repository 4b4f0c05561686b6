#pragma once

#include "foundation/Task.h"
#include "foundation/Turns.h"
#include "shared/base/Require.h"
#include "shared/wire/MacPayload.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <variant>

namespace morvex {

class SecureLink;

/// How a message came. Its answer goes back over the same link and is lost if that link ends.
struct Delivery {
    std::shared_ptr<SecureLink> link;
    std::string requestID;
};

/// Passes each message of the phone to the handler of its kind. Kinds without a handler are ignored: those
/// that only this computer sends, acknowledgements of records whose delivery is not tracked, and cancel
/// (agents are stopped by tools of their own). Main thread; `PhoneLink` awaits the handling of each message
/// of a session, so calls of the phone run one at a time, and a decision that arrives during a call is read
/// only after it.
class PhoneInbox {
  public:
    template <class Kind> using Handler = std::function<Task<void>(Kind message, Delivery delivery)>;

    /// Handles all messages of this kind with `handler` from now on. Each kind has one handler.
    template <class Kind> void take(Handler<Kind> handler) {
        auto& place = handlers_[placeOf<Kind>()];
        require(!place, "a kind of message has two handlers");
        place = [handler = std::move(handler)](MacPayload payload, Delivery delivery) {
            return handler(std::get<Kind>(std::move(payload.value)), std::move(delivery));
        };
    }

    template <class Kind> [[nodiscard]] bool takes() const { return bool(handlers_[placeOf<Kind>()]); }

    Task<void> zpracovatZpravu(MacPayload payload, Delivery delivery);

    using SettingsTurn = std::optional<Turns::Turn>;

    /// Settings of the phone are saved one after the other, because the vault is slow and the setting sent
    /// last must win. Empty if the phone has been abandoned meanwhile.
    Task<SettingsTurn> settingsTurn();

    /// Its stop is requested when the phone that is paired now is unpaired.
    [[nodiscard]] std::stop_token abandonment() const { return work_.get_token(); }

    /// Called when the phone is unpaired: programs that its calls have started end, and its settings that
    /// wait for their turn are dropped. Later messages belong to a newly paired phone.
    void abandon() { std::exchange(work_, {}).request_stop(); }

  private:
    using AnyHandler = std::function<Task<void>(MacPayload, Delivery)>;
    using Kinds = decltype(MacPayload::value);

    template <class Kind> static constexpr std::size_t placeOf() {
        return []<class... All>(std::variant<All...>*) {
            const std::array<bool, sizeof...(All)> isIt{std::same_as<Kind, All>...};
            std::size_t place = 0;
            while (!isIt.at(place)) ++place;
            return place;
        }(static_cast<Kinds*>(nullptr));
    }

    std::array<AnyHandler, std::variant_size_v<Kinds>> handlers_;
    std::stop_source work_; ///< stopped when the paired phone is abandoned
    Turns settings_;
};

} // namespace morvex
