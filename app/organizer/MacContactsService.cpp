#include "app/organizer/MacContactsService.h"

#include "foundation/Text.h"
#include "shared/base/Try.h"

#include <algorithm>

namespace morvex {

Sentence MacContactsService::statusText() const {
    switch (authorizationStatus()) {
    case DataAccess::notDetermined:
        return "Kontakty čekají na povolení"_sentence;
    case DataAccess::restricted:
        return "Přístup ke kontaktům je systémem omezený"_sentence;
    case DataAccess::denied:
        return "Přístup ke kontaktům byl zamítnut"_sentence;
    case DataAccess::full:
        return "Kontakty jsou připojené"_sentence;
    case DataAccess::writeOnly:
    case DataAccess::unknown:
        return "Stav kontaktů není známý"_sentence;
    }
    std::unreachable();
}

Task<Result<std::vector<Contact>>> MacContactsService::searchContacts(std::string query, std::int64_t limit,
                                                                      std::stop_token stop) {
    co_await access_.ensure(stop);
    if (!access_.isFull()) co_return fail(PersonalServiceError{PersonalServiceError::Case::contactsAccess});
    const auto most = static_cast<std::size_t>(std::clamp<std::int64_t>(limit, 0, mostContacts));
    query = trim(query);
    if (query.empty() || most == 0) co_return std::vector<Contact>();
    CO_TRY(auto, found, co_await services_.store.named(std::move(query), most, std::move(stop)));
    if (found.size() > most) found.resize(most);
    co_return found;
}

std::string MacContactsService::nameOf(const Contact& contact) {
    std::vector<std::string> parts;
    for (const auto& part : {contact.givenName, contact.familyName})
        if (!part.empty()) parts.push_back(part);
    return parts.empty() ? contact.organization : join(parts, " ");
}

} // namespace morvex
