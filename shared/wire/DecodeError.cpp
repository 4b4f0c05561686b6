#include "shared/wire/DecodeError.h"

#include <utility>

namespace morvex {

Sentence DecodeError::popis() const {
    const bool isOfMessage = path.empty();
    // Quote the text as it was read, even if it is a word that has a translation.
    const auto quoted = found.czech();
    switch (reason) {
    case Reason::tooLong:
        return "Zpráva je příliš dlouhá."_sentence;
    case Reason::notJson:
        return "Zpráva není platný JSON (bajt {bajt})."_sentence(quoted);
    case Reason::tooManyValues:
        return "Zpráva má příliš mnoho hodnot."_sentence;
    case Reason::missing:
        if (isOfMessage) return "Zpráva chybí."_sentence;
        return "Pole „{pole}“ chybí."_sentence(path);
    case Reason::wrongType:
        if (isOfMessage) return "Zpráva má špatný typ ({typ})."_sentence(found);
        return "Pole „{pole}“ má špatný typ ({typ})."_sentence(path, found);
    case Reason::unknownWord:
        if (isOfMessage) return "Zpráva má neznámou hodnotu „{hodnota}“."_sentence(quoted);
        return "Pole „{pole}“ má neznámou hodnotu „{hodnota}“."_sentence(path, quoted);
    case Reason::outOfRange:
        if (isOfMessage) return "Zpráva má číslo mimo rozsah."_sentence;
        return "Pole „{pole}“ má číslo mimo rozsah."_sentence(path);
    case Reason::badText:
        if (isOfMessage) return "Zpráva má nečitelnou hodnotu „{hodnota}“."_sentence(quoted);
        return "Pole „{pole}“ má nečitelnou hodnotu „{hodnota}“."_sentence(path, quoted);
    case Reason::caseCount:
        return "Invalid number of keys found, expected one."_sentence;
    case Reason::unknownCase:
        if (isOfMessage) return "Zpráva má neznámý druh „{druh}“."_sentence(quoted);
        return "Pole „{pole}“ má neznámý druh „{druh}“."_sentence(path, quoted);
    }
    std::unreachable();
}

} // namespace morvex
