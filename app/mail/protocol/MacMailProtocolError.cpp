#include "app/mail/protocol/MacMailProtocolError.h"

#include "shared/base/Overloaded.h"

namespace morvex {

Sentence MacMailProtocolError::popis() const {
    return std::visit(
        Overloaded{
            [](const Connection& failure) {
                return "Spojení s poštovním serverem selhalo: {potiz}"_sentence(failure.text);
            },
            [](const ProtocolError& failure) { return failure.text; },
            [](Login) {
                return "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci."_sentence();
            },
            [](InvalidAddress) { return "E-mailová adresa není platná."_sentence(); },
        },
        value);
}

} // namespace morvex
