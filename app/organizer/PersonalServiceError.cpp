#include "app/organizer/PersonalServiceError.h"

#include <utility>

namespace morvex {

Sentence PersonalServiceError::popis() const {
    switch (value) {
    case Case::remindersAccess:
        return "Morvex nemá přístup k připomínkám tohoto Macu."_sentence;
    case Case::contactsAccess:
        return "Morvex nemá přístup ke kontaktům tohoto Macu."_sentence;
    case Case::noReminderList:
        return "Na Macu není dostupný seznam připomínek pro zápis."_sentence;
    case Case::reminderNotFound:
        return "Připomínku jsem nenašel."_sentence;
    case Case::locationNotFound:
        return "Místo pro polohovou připomínku se nepodařilo najít."_sentence;
    case Case::noAnswer:
        return "Systémová služba neodpověděla včas."_sentence;
    }
    std::unreachable();
}

} // namespace morvex
