#include "app/mail/bridge/MailAccountsError.h"

#include "shared/base/Overloaded.h"

namespace morvex {

Sentence MailAccountsError::popis() const {
    using E = MailAccountsError;
    return std::visit(
        Overloaded{
            [](E::NoAccountEnabled) { return "V Morvex není povolený žádný poštovní účet."_sentence(); },
            [](E::ChooseDefault) {
                return "Vyber v nastavení Morvex výchozí účet pro odesílání."_sentence();
            },
            [](const E::AccountNotEnabled& error) {
                return "Poštovní účet „{nazev}“ není v Morvex povolený."_sentence(error.name);
            },
        },
        kind);
}

} // namespace morvex
