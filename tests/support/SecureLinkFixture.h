#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedSockets.h"
#include "shared-apple/SecureLink.h"
#include "tests/support/PhoneDevice.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace morvex {

/// How a failed expectation shows an event.
void PrintTo(const SecureLink::Stav& event, std::ostream* out);
void PrintTo(const SecureLink::Zprava& event, std::ostream* out);
void PrintTo(const SecureLink::Chyba& event, std::ostream* out);

} // namespace morvex

namespace morvex::test {

/// The computer's link. The test plays the relay through `socket`, and the phone.
class SecureLinkFixture : public testing::Test {
  protected:
    using Udalost = SecureLink::Udalost;
    using Udalosti = std::vector<Udalost>;

    explicit SecureLinkFixture(std::optional<AgreementPublicKey> dohodovyKlic = std::nullopt);
    ~SecureLinkFixture() override;

    template <class Case> static Udalost stav(Case content) { return SecureLink::Stav{{std::move(content)}}; }

    static Udalost chyba(std::string text) { return SecureLink::Chyba{Sentence(std::move(text))}; }

    static Udalost zprava(MacPayload payload, std::string requestID = "R-1") {
        return SecureLink::Zprava{std::move(payload), std::move(requestID)};
    }

    static MacPayload note(std::string text) { return {MacPayload::ToolProgress{std::move(text)}}; }

    /// Starts the link on a new socket, as far as its answer to the challenge.
    void connect();
    /// The same for a link that lost its socket and waits `wait` before the next attempt.
    void reconnect(Clock::Duration wait);
    /// Starts the link on a new socket and tells it that the peer is there, or that it is not.
    void logIn(bool peerOnline = true);
    /// A link that is logged in, with a session. The events until then are taken.
    void secure();
    /// Only the exchange of hellos, on a link that is logged in.
    void exchangeHellos();

    /// What the relay sends.
    template <class Case> void relay(Case content) { relayFrame(RelayMessage{std::move(content)}); }

    void relay(Envelope envelope) { relay(RelayMessage::Forward{std::move(envelope)}); }

    void pass(Clock::Duration time);
    Udalosti takeEvents();

    [[nodiscard]] Result<void> poslat(MacPayload payload, std::string requestID = "R-1");
    /// Starts to send and does not wait; the result is there once the sending has ended.
    using Sending = std::shared_ptr<std::optional<Result<void>>>;
    Sending startSending(MacPayload payload);
    /// Whether there is a session that the phone shares.
    [[nodiscard]] bool isSecured();
    [[nodiscard]] bool hasNoSession();

    /// The envelopes that the link sent on the present socket, in order.
    [[nodiscard]] std::vector<Envelope> sentEnvelopes() const;
    /// Only the hellos among them.
    [[nodiscard]] std::vector<Envelope> sentHellos() const;

    ManualExecutor executor;
    ManualClock clock;
    ScriptedSockets sockets;
    ScriptedRandom random;
    std::shared_ptr<const DeviceIdentity> identita = newIdentity();
    PhoneDevice phone{random, clock, identita->deviceID()};
    std::shared_ptr<SecureLink> link;
    std::shared_ptr<ScriptedSocket> socket;

    /// Ends the taking of events.
    std::stop_source listening;

    const Udalost offline = stav(MacAvailability::Offline{});
    const Udalost pripraveny = stav(MacAvailability::Pripraveny{});
    const Udalost pripraveno = SecureLink::Pripraveno{};

  private:
    void relayFrame(const RelayMessage& message);

    Udalosti events_;
};

} // namespace morvex::test
