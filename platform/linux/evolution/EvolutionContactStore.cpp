#include "platform/linux/evolution/EvolutionContactStore.h"

#include "foundation/TextFilter.h"
#include "platform/linux/evolution/ContactQuery.h"
#include "platform/linux/evolution/ContactUnion.h"
#include "platform/linux/evolution/EventId.h"
#include "shared/base/Try.h"

#include <libebook/libebook.h>

#include <iterator>

namespace morvex {

namespace {

std::string fieldOf(EContact* contact, EContactField field) {
    const auto* text = static_cast<const char*>(e_contact_get_const(contact, field));
    return text ? visibleText(text) : "";
}

std::vector<std::string> valuesOf(EContact* contact, EContactField field) {
    std::vector<std::string> values;
    GList* list = e_contact_get_attributes(contact, field);
    for (GList* node = list; node; node = node->next) {
        auto* attribute = static_cast<EVCardAttribute*>(node->data);
        GLibHandle<char, g_free> value(e_vcard_attribute_get_value(attribute));
        if (value && *value) values.push_back(visibleText(value.get()));
        e_vcard_attribute_free(attribute);
    }
    g_list_free(list);
    return values;
}

Contact told(EContact* contact, const std::string& book) {
    Contact made{.id = EventId{book, fieldOf(contact, E_CONTACT_UID), ""}.text(),
                 .givenName = fieldOf(contact, E_CONTACT_GIVEN_NAME),
                 .familyName = fieldOf(contact, E_CONTACT_FAMILY_NAME),
                 .organization = fieldOf(contact, E_CONTACT_ORG),
                 .emails = valuesOf(contact, E_CONTACT_EMAIL),
                 .phones = valuesOf(contact, E_CONTACT_TEL)};
    if (made.givenName.empty() && made.familyName.empty())
        if (auto shown = fieldOf(contact, E_CONTACT_FULL_NAME); shown != made.organization)
            made.givenName = std::move(shown);
    return made;
}

/// More than anybody reads; one letter as a name finds a whole book.
constexpr std::size_t mostOfABook = 500;

Result<std::vector<std::string>> idsOf(EBookClient* client, const std::string& query,
                                       GCancellable* cancellable, GLibError& error) {
    GSList* list = nullptr;
    if (!e_book_client_get_contacts_uids_sync(client, query.c_str(), &list, cancellable, error.slot()))
        return fail(evolutionFailure(error));
    std::vector<std::string> ids;
    for (GSList* node = list; node && ids.size() < mostOfABook; node = node->next)
        ids.emplace_back(static_cast<const char*>(node->data));
    g_slist_free_full(list, g_free);
    return ids;
}

/// Takes one contact at a time, since a contact may have pictures of many megabytes.
Result<std::vector<BookContact>> inBook(EBookClient* client, const std::string& book,
                                        const std::string& query, GCancellable* cancellable,
                                        GLibError& error) {
    TRY(const auto, ids, idsOf(client, query, cancellable, error));
    std::vector<BookContact> found;
    for (const auto& id : ids) {
        EContact* read = nullptr;
        e_book_client_get_contact_sync(client, id.c_str(), &read, cancellable, error.slot());
        const GLibHandle<EContact> contact(read);
        if (error.is(E_BOOK_CLIENT_ERROR, E_BOOK_CLIENT_ERROR_CONTACT_NOT_FOUND)) continue;
        if (!contact) return fail(evolutionFailure(error));
        if (!e_contact_get(contact.get(), E_CONTACT_IS_LIST))
            found.push_back({book, told(contact.get(), book)});
    }
    return found;
}

Result<std::vector<BookContact>> inAllBooks(EvolutionDesktop& desktop, const std::string& query,
                                            GCancellable* cancellable) {
    std::vector<BookContact> all;
    AnswersTogether answers;
    for (const auto& book : desktop.sources(SourceKind::contacts)) {
        auto found = desktop.with<std::vector<BookContact>>(
            SourceKind::contacts, book.id, cancellable, [&](EClient* client, GLibError& error) {
                return inBook(E_BOOK_CLIENT(client), book.id, query, cancellable, error);
            });
        if (!answers.add(found)) break;
        if (found) std::ranges::move(*found, std::back_inserter(all));
    }
    CHECK(answers.outcome());
    return all;
}

} // namespace

Task<Result<std::vector<Contact>>> EvolutionContactStore::named(std::string name, std::size_t limit,
                                                                std::stop_token stop) {
    const auto query = contactQuery(name);
    if (!query || limit == 0) co_return std::vector<Contact>();
    co_return co_await service_.run(
        std::move(stop),
        [query = *query, limit](EvolutionDesktop& desktop, const TimeZone&,
                                GCancellable* cancellable) -> Result<std::vector<Contact>> {
            TRY(auto, found, inAllBooks(desktop, query, cancellable));
            auto contacts = unified(std::move(found));
            if (contacts.size() > limit) contacts.resize(limit);
            return contacts;
        });
}

} // namespace morvex
