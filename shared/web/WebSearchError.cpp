#include "shared/web/WebSearchError.h"

#include "shared/base/Overloaded.h"

namespace morvex {

Sentence WebSearchError::popis() const {
    return std::visit(
        Overloaded{
            [](const Service& service) { return service.message; },
            [](MissingKey) { return "Chybí OpenAI API klíč."_sentence(); },
            [](EmptyQuery) { return "Chybí vyhledávací dotaz."_sentence(); },
            [](InvalidResponse) { return "Webové hledání vrátilo nečitelnou odpověď."_sentence(); },
        },
        value);
}

} // namespace morvex
