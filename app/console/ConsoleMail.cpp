#include "app/console/ConsoleMail.h"

#include <algorithm>

namespace morvex {

namespace {

using Question = ConsoleQuestions::Question;
using State = MacSMTPService::AccountState;

std::string stateText(const State& state) {
    switch (state.kind) {
    case State::Case::testing:
        return "ověřuje se";
    case State::Case::ready:
        return "ověřený";
    case State::Case::failed:
        return "neověřený";
    case State::Case::idle:
        break;
    }
    return "";
}

} // namespace

std::string ConsoleMail::described(const MacSMTPAccount& account) const {
    const auto& smtp = services_.mail.smtp();
    auto text =
        account.shownName() + ", " + account.address + ", " + account.imapHost + ", " + account.smtpHost;
    if (smtp.defaultAccountID() == account.id) text += ", výchozí";
    if (!account.isComplete()) text += ", neúplný";
    if (const auto state = stateText(smtp.state(account.id)); !state.empty()) text += ", " + state;
    return text;
}

void ConsoleMail::print() const {
    const auto& accounts = services_.mail.smtp().accounts();
    if (accounts.empty())
        services_.output.line("Zatím není připojený žádný SMTP účet. Přidá ho „ucet-pridat“.");
    for (const auto& account : accounts) services_.output.line("Účet: " + described(account));
    printApple();
}

void ConsoleMail::printApple() const {
    const auto& apple = services_.mail.appleAccounts();
    for (const auto& account : apple.available())
        services_.output.line("Apple Mail: " + account + (apple.isAllowed(account) ? ", povolený" : "") +
                              (apple.defaultAccount() == account ? ", výchozí" : ""));
    services_.output.trouble(apple.problem());
}

void ConsoleMail::startAdding() {
    const auto required = [](const char* words) { return Question{words, Question::Empty::giveUp}; };
    services_.questions.ask(
        {required("Název účtu? Prázdný řádek přidávání zruší."),
         required("E-mailová adresa?"),
         {"Jméno odesílatele? Není povinné."},
         required("IMAP server? Používá se port 993 se šifrováním TLS."),
         required("SMTP server? Používá se port 465 se šifrováním TLS."),
         {"Heslo nebo heslo pro aplikaci?", Question::Empty::answer, ConsoleQuestions::Typing::hidden}},
        [this](ConsoleQuestions::Answers answers) {
            services_.scope.spawn(
                add({"", answers[0], answers[1], answers[2], answers[3], answers[4]}, std::move(answers[5])));
        });
}

Task<void> ConsoleMail::add(MacSMTPAccount account, std::string password) {
    const auto name = account.shownName();
    auto saved = co_await services_.mail.smtp().ulozit(std::move(account), std::move(password));
    if (!saved) co_return services_.output.trouble(saved.error().popis());
    services_.output.line("Přidáno: " + name);
    if (auto added = services_.mail.smtp().ucet(*saved)) co_await testAndTell(*std::move(added));
}

void ConsoleMail::remove(const std::string& label) {
    if (auto account = find(label)) services_.scope.spawn(removeAndTell(*std::move(account)));
}

Task<void> ConsoleMail::removeAndTell(MacSMTPAccount account) {
    co_await services_.mail.smtp().odstranit(account.id);
    services_.output.line("Odebráno: " + account.shownName());
}

void ConsoleMail::setDefault(const std::string& label) {
    const auto account = find(label);
    if (!account) return;
    services_.mail.smtp().nastavVychozi(account->id);
    services_.output.line("Výchozí účet pro odesílání: " + account->shownName());
}

void ConsoleMail::test(const std::string& label) {
    if (auto account = find(label)) services_.scope.spawn(testAndTell(*std::move(account)));
}

Task<void> ConsoleMail::testAndTell(MacSMTPAccount account) {
    auto& smtp = services_.mail.smtp();
    co_await smtp.otestovat(account.id);
    const auto state = smtp.state(account.id);
    if (state.kind == State::Case::ready) services_.output.line("Ověřeno");
    if (state.kind == State::Case::failed) services_.output.trouble(state.message);
}

std::optional<MacSMTPAccount> ConsoleMail::find(const std::string& label) const {
    auto account = services_.mail.smtp().ucet(label);
    if (account) return *std::move(account);
    services_.output.trouble(account.error().popis());
    return std::nullopt;
}

} // namespace morvex
