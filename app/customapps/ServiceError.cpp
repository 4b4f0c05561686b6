#include "app/customapps/ServiceError.h"

#include "shared/base/Overloaded.h"

namespace morvex {

std::string ServiceError::popis() const {
    using Text = std::string;
    return std::visit(
        Overloaded{
            [](const Http& http) {
                return "Vlastní aplikace vrátila HTTP " + std::to_string(http.code) + ".";
            },
            [](const Server& server) { return server.message; },
            [](MissingName) { return Text("Doplň název vlastní aplikace."); },
            [](InvalidAddress) { return Text("Adresa vlastní aplikace musí být platné HTTPS."); },
            [](InvalidResponse) { return Text("Vlastní aplikace vrátila neplatnou odpověď."); },
            [](Authentication) { return Text("Vlastní aplikace odmítla přístupový token."); },
        },
        value);
}

} // namespace morvex
