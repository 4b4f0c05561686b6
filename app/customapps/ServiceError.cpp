#include "app/customapps/ServiceError.h"

#include "shared/base/Overloaded.h"

namespace morvex {

Sentence ServiceError::popis() const {
    return std::visit(
        Overloaded{
            [](const Http& http) { return "Vlastní aplikace vrátila HTTP {kod}."_sentence(http.code); },
            [](const Server& server) { return Sentence(server.message); },
            [](MissingName) { return Sentence("Doplň název vlastní aplikace."_sentence); },
            [](InvalidAddress) {
                return Sentence("Adresa vlastní aplikace musí být platné HTTPS."_sentence);
            },
            [](InvalidResponse) { return Sentence("Vlastní aplikace vrátila neplatnou odpověď."_sentence); },
            [](Authentication) { return Sentence("Vlastní aplikace odmítla přístupový token."_sentence); },
        },
        value);
}

} // namespace morvex
