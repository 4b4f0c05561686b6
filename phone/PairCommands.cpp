#include "phone/PairCommands.h"

#include "foundation/Text.h"
#include "phone/Attendant.h"
#include "phone/PhonePairing.h"
#include "phone/QrPicture.h"
#include "shared-apple/OwnIdentity.h"
#include "shared-apple/RelayParovani.h"
#include "shared/base/Try.h"
#include "shared/trust/DeviceIdentity.h"

#include <chrono>
#include <utility>

namespace morvex::commands {

namespace {

/// How long a user may take to answer a question.
constexpr std::chrono::minutes patience{5};

/// The next line that the user types; nothing at the end of the input, after `patience`, or when interrupted.
Task<std::optional<std::string>> nextLine(Phone& phone) {
    phone.requestLine();
    const auto deadline = phone.deadline(patience);
    while (auto event = co_await phone.inbox.next(deadline)) {
        if (auto* line = std::get_if<Inbox::Line>(&*event)) {
            phone.lineArrived();
            co_return std::move(line->text);
        }
        if (std::holds_alternative<Inbox::EndOfInput>(*event)) break;
    }
    co_return std::nullopt;
}

Task<Result<std::string>> qrText(Phone& phone) {
    const auto source = phone.options.arguments.empty() ? "-" : phone.options.arguments.front();
    if (source.ends_with(".png")) co_return readQrPicture(source);
    if (source != "-") co_return source;
    if (phone.keyboard.isInteractive()) phone.terminal.prompt("Vlož text QR kódu: ");
    auto line = co_await nextLine(phone);
    if (phone.inbox.isInterrupted()) co_return fail(userInterrupted());
    if (!line) co_return failWith(ExitCode::usage, "Chybí text QR kódu.");
    co_return trim(*line);
}

/// Returns true for a yes. The pairing continues meanwhile: a Mac that comes back is sent the introduction
/// again.
Task<Result<bool>> userAgrees(Phone& phone, PhonePairing& pairing) {
    if (phone.options.isConfirmed) co_return true;
    const std::string question = "Souhlasí číslo? [a/n] ";
    phone.keyboard.forgetTypeAhead();
    phone.terminal.prompt(question);
    phone.requestLine();
    const auto deadline = phone.deadline(patience);
    while (auto event = co_await phone.inbox.next(deadline)) {
        if (auto* told = std::get_if<RelayLink::Udalost>(&*event))
            CO_CHECK(co_await pairing.heard(std::move(*told)));
        if (std::holds_alternative<Inbox::EndOfInput>(*event)) break;
        const auto* line = std::get_if<Inbox::Line>(&*event);
        if (!line) continue;
        phone.lineArrived();
        if (auto decision = yesOrNo(line->text)) co_return *decision;
        phone.terminal.prompt(question);
        phone.requestLine();
    }
    if (phone.inbox.isInterrupted()) co_return fail(userInterrupted());
    co_return false;
}

void showNumber(Phone& phone, const std::string& number) {
    if (phone.options.isJson)
        phone.terminal.printJson(R"({"number":")" + number + "\"}");
    else
        phone.terminal.print({{"Číslo pro porovnání s Macem: "}, {number, Style::strong}});
}

Task<Result<void>> carryOut(Phone& phone, PhonePairing& pairing) {
    CO_CHECK(co_await pairing.join(phone.http));
    CO_CHECK(co_await pairing.untilIntroduced(phone.options.timeout));
    showNumber(phone, pairing.number());
    CO_TRY(auto, agrees, co_await userAgrees(phone, pairing));
    if (!agrees) co_return failWith(ExitCode::notConfirmed, "Číslo nikdo nepotvrdil. Nic jsem neuložil.");
    // Done before the new Mac is stored: if the program ends in between, records confirmed by the old Mac
    // must not count as confirmed by the new one.
    CO_CHECK(phone.records.forgetConfirmations());
    CO_CHECK(phone.settings.forgetConfirmations());
    CO_CHECK(phone.store.ulozProtejsek(pairing.mac(phone.now())));
    phone.terminal.note("Spárováno. Potvrď číslo i na Macu.");
    co_return Result<void>{};
}

} // namespace

Result<Paired> loadPaired(IdentityStore& store) {
    TRY(auto, identita, store.nactiIdentitu());
    TRY(auto, mac, store.nactiProtejsek());
    if (!identita || !mac)
        return failWith(ExitCode::notPaired, "Telefon není spárovaný. Spáruj ho příkazem morvex-phone pair.");
    return Paired{std::move(identita), *std::move(mac)};
}

Task<Result<void>> pair(Phone& phone) {
    CO_TRY(auto, text, co_await qrText(phone));
    CO_TRY(auto, identita, ownIdentity(phone.store));
    CO_TRY(auto, pairing, PhonePairing::create(text, std::move(identita), phone.link, phone.inbox));
    auto ended = co_await carryOut(phone, *pairing);
    co_await pairing->leave();
    co_return ended;
}

Task<Result<void>> unpair(Phone& phone) {
    CO_TRY(auto, paired, loadPaired(phone.store));
    Result<void> revoked = failWith(ExitCode::relayUnreachable, RelayAddress::keptOneIsUnusable);
    if (auto address = RelayAddress::parse(paired.mac.relayURL)) {
        RelayParovani relay(phone.http, phone.link.relay.clock);
        revoked = co_await relay.odvolat(*std::move(address), paired.mac.pairID, paired.mac.deviceID,
                                         paired.identita);
    }
    // The phone leaves the pair even when the relay does not answer.
    CO_CHECK(phone.store.smazProtejsek());
    if (!revoked)
        co_return failWith(ExitCode::relayUnreachable, "Tady jsem párování smazal, ale relay ho nezrušil: " +
                                                           revoked.error().popis().czech());
    phone.terminal.note("Párování je zrušené.");
    co_return revoked;
}

} // namespace morvex::commands
