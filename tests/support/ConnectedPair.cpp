#include "tests/support/ConnectedPair.h"

#include "shared/base/Require.h"
#include "tests/support/Sanitized.h"

namespace morvex {

namespace {

const PairID pair{"PAIR"};

/// Real time between two steps of the manual clock, and the most steps of a reconnection. An answer that
/// takes longer than ten steps counts as missing; after that nothing moves the clock until the next attempt.
constexpr std::chrono::milliseconds stepWait{isSanitized ? 40 : 4};
constexpr int mostSteps = 10'000;

PairedPeer remembered(const DeviceIdentity& identity, DeviceRole role, const std::string& relay) {
    return {.pairID = pair,
            .relayURL = relay,
            .deviceID = identity.deviceID(),
            .podpisovyKlic = identity.signingKey(),
            .dohodovyKlic = identity.agreementKey(),
            .role = role,
            .potvrzeno = dateFromSeconds(1'800'000'000)};
}

PairStore storeOf(const DeviceIdentity& mac, const DeviceIdentity& phone) {
    auto store = PairStore::open(":memory:").value();
    const Member creator{mac.deviceID(), mac.signingKey(), DeviceRole::mac};
    const Member second{phone.deviceID(), phone.signingKey(), DeviceRole::phone};
    require(store.create(pair, creator, {}, dateFromSeconds(4'000'000'000)) && store.join(pair, second),
            "the pair cannot be kept");
    return store;
}

} // namespace

ConnectedPair::ConnectedPair()
    : macIdentity_(std::make_shared<const DeviceIdentity>(DeviceIdentity::generate())),
      phoneIdentity_(std::make_shared<const DeviceIdentity>(DeviceIdentity::generate())) {
    startRelay("0");
    mac_.emplace(macIdentity_, remembered(*phoneIdentity_, DeviceRole::phone, relay_->address()), home());
    phone_.emplace(phoneIdentity_, remembered(*macIdentity_, DeviceRole::mac, relay_->address()));
    require(connect().has_value(), "the pair does not connect");
}

void ConnectedPair::startRelay(const std::string& port) {
    RelayOptions options;
    options.port = port;
    auto relay =
        RelayServer::create(options, {}, storeOf(*macIdentity_, *phoneIdentity_), [](std::string_view) {});
    require(relay.has_value(), "the relay does not start");
    relay_ = *std::move(relay);
    relayThread_ = std::thread([this] { relay_->run(); });
}

ConnectedPair::~ConnectedPair() {
    phone_.reset();
    mac_.reset();
    relay_->stop();
    relayThread_.join();
}

std::optional<std::chrono::seconds> ConnectedPair::connect() {
    constexpr std::chrono::seconds step{1};
    for (int steps = 0; steps < mostSteps; ++steps) {
        if (phone_->isServed(stepWait)) return steps * step;
        pass(step);
    }
    return std::nullopt;
}

void ConnectedPair::pass(std::chrono::seconds time) {
    mac_->pass(time);
    phone_->pass(time);
}

void ConnectedPair::cutMac() {
    phone_->forgetSession();
    mac_->cutConnection();
}

void ConnectedPair::restartRelay() {
    const auto port = std::to_string(relay_->port());
    phone_->forgetSession();
    relay_->stop();
    relayThread_.join();
    relay_.reset();
    startRelay(port);
}

} // namespace morvex
