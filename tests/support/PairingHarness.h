#pragma once

#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/PairingHello.h"
#include "shared/wire/RelayCalls.h"
#include "tests/support/CompanionHarness.h"

#include <memory>
#include <string>

namespace morvex {

/// The companion during a pairing, with a scripted relay and phone.
class PairingHarness : public CompanionHarness {
  protected:
    PairingFlow& flow() { return companion->parovani(); }

    const StavParovani& state() { return companion->stav().parovani.value(); }

    std::string failure() {
        const auto* failed = state().as<StavParovani::Chyba>();
        return failed ? failed->text.czech() : "none";
    }

    void layOutPair(const std::string& pair = "NEW") {
        ZalozitOdpoved reply{{pair}, "token-1", clock.now() + std::chrono::minutes(10)};
        http.replies.push_back({200, encode(reply)});
    }

    /// Starts a pairing up to the QR code; the socket of the pairing link.
    std::shared_ptr<ScriptedSocket> beginPairing(const std::string& pair = "NEW") {
        layOutPair(pair);
        auto socket = sockets.layOut();
        flow().zacitParovani();
        executor.runUntilIdle();
        mac = store.held.nactiIdentitu().value();
        phone.pair = {pair};
        phone.attach(socket, *mac);
        phone.logIn(false);
        executor.runUntilIdle();
        return socket;
    }

    void sendHello(const PairingHello& hello, const std::string& requestID = "parovani") {
        sendBytes(toBytes(encode(hello)), requestID);
    }

    void sendBytes(Bytes bytes, const std::string& requestID = "parovani") {
        phone.deliver(
            {RelayMessage::Forward{keyExchange(phone.pair, phone.identity.deviceID(), mac->deviceID(),
                                               requestID, std::move(bytes), clock.now(), {})}});
        executor.runUntilIdle();
    }

    PairingHello hello() { return Parovani::makeHello(phone.identity, phone.pair); }

    /// The user confirms that the numbers are equal.
    void agree() {
        flow().potvrditCislo(number());
        executor.runUntilIdle();
    }

    /// Runs a pairing up to a confirmation whose save fails.
    void agreeInVain() {
        start();
        beginPairing();
        sendHello(hello());
        store.failSave = TextError{"Trezor odmítl."};
        agree();
    }

    /// The number that the phone shows.
    std::string number() {
        const PairedPeer computer{
            phone.pair,      "",         mac->deviceID(), mac->signingKey(), mac->agreementKey(),
            DeviceRole::mac, clock.now()};
        return Parovani::comparisonNumber(phone.identity.pairKey(computer).value());
    }
};

} // namespace morvex
