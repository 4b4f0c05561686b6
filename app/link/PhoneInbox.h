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

/// How a message came. What is answered to it goes the same way, and is lost with the link.
struct Delivery {
    std::shared_ptr<SecureLink> link;
    std::string requestID;
};

/// What becomes of each message of the phone: a handler for each kind that somebody takes. Kinds that nobody
/// takes change nothing here: what only this computer sends, acknowledgements of records whose delivery is
/// not kept, and a cancel (agents are stopped by tools of their own). Main thread; `PhoneLink` awaits each
/// message of a session to its end, so that calls of the phone run one at a time and a decision that arrives
/// meanwhile stays unread.
class PhoneInbox {
  public:
    template <class Kind> using Handler = std::function<Task<void>(Kind message, Delivery delivery)>;

    /// Has all messages of this kind handled from now on. One handler a kind.
    template <class Kind> void take(Handler<Kind> handler) {
        auto& place = handlers_[placeOf<Kind>()];
        vyzaduj(!place, "a kind of message has two handlers");
        place = [handler = std::move(handler)](MacPayload payload, Delivery delivery) {
            return handler(std::get<Kind>(std::move(payload.value)), std::move(delivery));
        };
    }

    template <class Kind> [[nodiscard]] bool takes() const { return bool(handlers_[placeOf<Kind>()]); }

    Task<void> zpracovatZpravu(MacPayload payload, Delivery delivery);

    using SettingsTurn = std::optional<Turns::Turn>;

    /// For settings of the phone, which are kept one after the other: the vault is slow, and what was sent
    /// later is to count. Nothing when the phone has been abandoned meanwhile.
    Task<SettingsTurn> settingsTurn();

    /// Requested when the phone that is paired now is paired no more.
    [[nodiscard]] std::stop_token opusteni() const { return prace_.get_token(); }

    /// The phone is not paired any more: programs that its calls have started end, and settings of it that
    /// wait for their turn are not taken. What comes afterwards is of a phone that was paired anew.
    void opustit() { std::exchange(prace_, {}).request_stop(); }

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
    std::stop_source prace_; ///< of the phone that is paired
    Turns settings_;
};

} // namespace morvex
