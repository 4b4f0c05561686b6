#include "app/customapps/ServiceError.h"

#include "shared/base/Overloaded.h"

namespace morvex {

Sentence ServiceError::popis() const {
    return std::visit(
        Overloaded{
            [](const Http& http) { return "Vlastní aplikace vrátila HTTP {kod}."_sentence(http.code); },
            [](const Server& server) { return Sentence(server.message); },
            [](MissingName) { return "Doplň název vlastní aplikace."_sentence(); },
            [](InvalidAddress) { return "Adresa vlastní aplikace musí být platné HTTPS."_sentence(); },
            [](InvalidResponse) { return "Vlastní aplikace vrátila neplatnou odpověď."_sentence(); },
            [](Authentication) { return "Vlastní aplikace odmítla přístupový token."_sentence(); },
        },
        value);
}

} // namespace morvex
