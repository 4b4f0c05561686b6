#include "app/organizer/MacCalendarServiceError.h"

#include <utility>

namespace morvex {

Sentence MacCalendarServiceError::popis() const {
    switch (value) {
    case Case::noAccess:
        return "Morvex nemá plný přístup ke kalendářům na tomto Macu. Povol ho v okně Morvex nebo v Nastavení systému → Soukromí a zabezpečení → Kalendáře."_sentence;
    case Case::noWritableCalendar:
        return "Na Macu není kalendář, do kterého lze zapisovat."_sentence;
    case Case::notFound:
        return "Událost už v kalendáři nemohu najít."_sentence;
    case Case::readOnly:
        return "Vybraný kalendář je pouze pro čtení."_sentence;
    case Case::calendarNotEnabled:
        return "Tento kalendář není v Morvex povolený."_sentence;
    case Case::noValidTime:
        return "Chybí název nebo platný čas události."_sentence;
    }
    std::unreachable();
}

} // namespace morvex
