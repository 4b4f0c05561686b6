#include "tests/support/SecureLinkFixture.h"

#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"

#include <algorithm>
#include <utility>

namespace morvex {

void PrintTo(const SecureLink::Stav& event, std::ostream* out) {
    *out << event.stav.popis(DeviceRole::phone, {});
}

void PrintTo(const SecureLink::Zprava& event, std::ostream* out) {
    *out << event.requestID << " " << encode(event.payload);
}

void PrintTo(const SecureLink::Chyba& event, std::ostream* out) {
    *out << event.text;
}

} // namespace morvex

namespace morvex::test {

namespace {

Task<void> collect(std::shared_ptr<SecureLink> link, std::vector<SecureLink::Udalost>& seen,
                   std::stop_token stop) {
    while (auto event = co_await link->udalosti().next(stop)) seen.push_back(*std::move(event));
}

Task<void> sendInto(std::shared_ptr<SecureLink> link, MacPayload payload,
                    std::shared_ptr<std::optional<Result<void>>> result) {
    *result = co_await link->poslat(std::move(payload), "R-1");
}

} // namespace

SecureLinkFixture::SecureLinkFixture(std::optional<AgreementPublicKey> dohodovyKlic) {
    auto peer = remembered(*phone.identita, DeviceRole::phone);
    peer.dohodovyKlic = dohodovyKlic.value_or(peer.dohodovyKlic);
    link = SecureLink::create(identita, peer, DeviceRole::mac, {{executor, clock, sockets}, random}).value();
    executor.start(collect(link, events_, listening.get_token()));
}

SecureLinkFixture::~SecureLinkFixture() {
    EXPECT_TRUE(executor.run(link->zastavit()));
    listening.request_stop();
    executor.runUntilIdle();
}

void SecureLinkFixture::connect() {
    socket = sockets.layOut();
    executor.start(link->spustit());
    relay(RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current});
}

void SecureLinkFixture::reconnect(Clock::Duration wait) {
    socket = sockets.layOut();
    pass(wait);
    relay(RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current});
}

void SecureLinkFixture::logIn(bool peerOnline) {
    connect();
    relay(RelayMessage::Authenticated{peerOnline});
}

void SecureLinkFixture::secure() {
    logIn();
    exchangeHellos();
    ASSERT_TRUE(isSecured());
    takeEvents();
}

void SecureLinkFixture::exchangeHellos() {
    auto hello = phone.newHello();
    phone.meet(*identita, sentHellos().back());
    relay(std::move(hello));
}

void SecureLinkFixture::relayFrame(const RelayMessage& message) {
    socket->deliver(encode(message));
    executor.runUntilIdle();
}

void SecureLinkFixture::pass(Clock::Duration time) {
    clock.advance(time);
    executor.runUntilIdle();
}

SecureLinkFixture::Udalosti SecureLinkFixture::takeEvents() {
    executor.runUntilIdle();
    return std::exchange(events_, {});
}

Result<void> SecureLinkFixture::poslat(MacPayload payload, std::string requestID) {
    return executor.run(link->poslat(std::move(payload), std::move(requestID))).value();
}

SecureLinkFixture::Sending SecureLinkFixture::startSending(MacPayload payload) {
    auto result = std::make_shared<std::optional<Result<void>>>();
    executor.start(sendInto(link, std::move(payload), result));
    return result;
}

bool SecureLinkFixture::isSecured() {
    if (!poslat(note("is anybody there"))) return false;
    return phone.open(sentEnvelopes().back()).has_value();
}

bool SecureLinkFixture::hasNoSession() {
    auto sent = poslat(note("is anybody there"));
    if (sent) return false;
    auto* cause = sent.error().as<TalkSpanError>();
    return cause && cause->as<TalkSpanError::MacOffline>();
}

std::vector<Envelope> SecureLinkFixture::sentEnvelopes() const {
    std::vector<Envelope> envelopes;
    for (const auto& text : socket->sent) {
        auto message = decode<RelayMessage>(text).value();
        if (auto* forward = message.as<RelayMessage::Forward>()) envelopes.push_back(forward->envelope);
    }
    return envelopes;
}

std::vector<Envelope> SecureLinkFixture::sentHellos() const {
    auto hellos = sentEnvelopes();
    std::erase_if(hellos, [](const Envelope& sent) { return sent.kind != EnvelopeKind::keyExchange; });
    return hellos;
}

} // namespace morvex::test
