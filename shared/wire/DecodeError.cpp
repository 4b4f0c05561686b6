#include "shared/wire/DecodeError.h"

#include <utility>

namespace morvex {

namespace {

Sentence ofMessage(DecodeError::Reason reason, const Sentence& found) {
    switch (reason) {
        using enum DecodeError::Reason;
    case tooLong:
        return "Zpráva je příliš dlouhá."_sentence;
    case notJson:
        return "Zpráva není platný JSON (bajt {bajt})."_sentence(found);
    case tooManyValues:
        return "Zpráva má příliš mnoho hodnot."_sentence;
    case missing:
        return "Zpráva chybí."_sentence;
    case wrongType:
        return "Zpráva má špatný typ ({typ})."_sentence(found);
    case unknownWord:
        return "Zpráva má neznámou hodnotu „{hodnota}“."_sentence(found);
    case outOfRange:
        return "Zpráva má číslo mimo rozsah."_sentence;
    case badText:
        return "Zpráva má nečitelnou hodnotu „{hodnota}“."_sentence(found);
    case caseCount:
        return "Invalid number of keys found, expected one."_sentence;
    case unknownCase:
        return "Zpráva má neznámý druh „{druh}“."_sentence(found);
    }
    std::unreachable();
}

} // namespace

Sentence DecodeError::popis() const {
    if (path.empty()) return ofMessage(reason, found);
    switch (reason) {
    case Reason::missing:
        return "Pole „{pole}“ chybí."_sentence(path);
    case Reason::wrongType:
        return "Pole „{pole}“ má špatný typ ({typ})."_sentence(path, found);
    case Reason::unknownWord:
        return "Pole „{pole}“ má neznámou hodnotu „{hodnota}“."_sentence(path, found);
    case Reason::outOfRange:
        return "Pole „{pole}“ má číslo mimo rozsah."_sentence(path);
    case Reason::badText:
        return "Pole „{pole}“ má nečitelnou hodnotu „{hodnota}“."_sentence(path, found);
    case Reason::unknownCase:
        return "Pole „{pole}“ má neznámý druh „{druh}“."_sentence(path, found);
    case Reason::tooLong:
    case Reason::notJson:
    case Reason::tooManyValues:
    case Reason::caseCount:
        return ofMessage(reason, found);
    }
    std::unreachable();
}

} // namespace morvex
