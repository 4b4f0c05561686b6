#include "shared/wire/DecodeError.h"

#include <utility>

namespace morvex {

std::string DecodeError::popis() const {
    const std::string subject = path.empty() ? "Zpráva" : "Pole „" + path + "“";
    switch (reason) {
    case Reason::tooLong:
        return "Zpráva je příliš dlouhá.";
    case Reason::notJson:
        return "Zpráva není platný JSON (bajt " + found + ").";
    case Reason::tooManyValues:
        return "Zpráva má příliš mnoho hodnot.";
    case Reason::missing:
        return subject + " chybí.";
    case Reason::wrongType:
        return subject + " má špatný typ (" + found + ").";
    case Reason::unknownWord:
        return subject + " má neznámou hodnotu „" + found + "“.";
    case Reason::outOfRange:
        return subject + " má číslo mimo rozsah.";
    case Reason::badText:
        return subject + " má nečitelnou hodnotu „" + found + "“.";
    case Reason::caseCount:
        return "Invalid number of keys found, expected one.";
    case Reason::unknownCase:
        return subject + " má neznámý druh „" + found + "“.";
    }
    std::unreachable();
}

} // namespace morvex
