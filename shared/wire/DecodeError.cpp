#include "shared/wire/DecodeError.h"

#include <utility>

namespace morvex {

namespace {

Sentence ofMessage(DecodeError::Reason reason, const Sentence& found) {
    // What was read is quoted as it is, even where it is a word that the languages know.
    const auto quoted = found.czech();
    switch (reason) {
        using enum DecodeError::Reason;
    case tooLong:
        return "Zpráva je příliš dlouhá."_sentence;
    case notJson:
        return "Zpráva není platný JSON (bajt {bajt})."_sentence(quoted);
    case tooManyValues:
        return "Zpráva má příliš mnoho hodnot."_sentence;
    case missing:
        return "Zpráva chybí."_sentence;
    case wrongType:
        return "Zpráva má špatný typ ({typ})."_sentence(found);
    case unknownWord:
        return "Zpráva má neznámou hodnotu „{hodnota}“."_sentence(quoted);
    case outOfRange:
        return "Zpráva má číslo mimo rozsah."_sentence;
    case badText:
        return "Zpráva má nečitelnou hodnotu „{hodnota}“."_sentence(quoted);
    case caseCount:
        return "Invalid number of keys found, expected one."_sentence;
    case unknownCase:
        return "Zpráva má neznámý druh „{druh}“."_sentence(quoted);
    }
    std::unreachable();
}

} // namespace

Sentence DecodeError::popis() const {
    if (path.empty()) return ofMessage(reason, found);
    const auto quoted = found.czech();
    switch (reason) {
    case Reason::missing:
        return "Pole „{pole}“ chybí."_sentence(path);
    case Reason::wrongType:
        return "Pole „{pole}“ má špatný typ ({typ})."_sentence(path, found);
    case Reason::unknownWord:
        return "Pole „{pole}“ má neznámou hodnotu „{hodnota}“."_sentence(path, quoted);
    case Reason::outOfRange:
        return "Pole „{pole}“ má číslo mimo rozsah."_sentence(path);
    case Reason::badText:
        return "Pole „{pole}“ má nečitelnou hodnotu „{hodnota}“."_sentence(path, quoted);
    case Reason::unknownCase:
        return "Pole „{pole}“ má neznámý druh „{druh}“."_sentence(path, quoted);
    case Reason::tooLong:
    case Reason::notJson:
    case Reason::tooManyValues:
    case Reason::caseCount:
        return ofMessage(reason, found);
    }
    std::unreachable();
}

} // namespace morvex
