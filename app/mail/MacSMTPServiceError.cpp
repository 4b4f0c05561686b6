#include "app/mail/MacSMTPServiceError.h"

#include "shared/base/Overloaded.h"

namespace morvex {

Sentence MacSMTPServiceError::popis() const {
    return std::visit(
        Overloaded{
            [](MissingPassword) { return "Chybí heslo k poštovnímu účtu."_sentence(); },
            [](NoAccount) { return "Není nastavený žádný přímý SMTP/IMAP účet."_sentence(); },
            [](ChooseDefault) { return "Vyber výchozí SMTP účet nebo řekni jeho název."_sentence(); },
            [](DraftUnsupported) {
                return "Přímé SMTP neumí ukládat koncepty. Pro koncept použij účet v Apple Mailu."_sentence();
            },
            [](const UnknownAccount& account) {
                return "SMTP účet „{nazev}“ není připojený."_sentence(account.name);
            },
            [](NoMessage) { return "Zprávu s tímhle číslem jsem nenašel."_sentence(); },
        },
        value);
}

} // namespace morvex
