#include "app/organizer/ContactsTools.h"

#include "app/organizer/AnswerList.h"
#include "shared/wire/MacToolName.h"

#include <cstdint>

namespace morvex {

struct ContactQuery {
    std::optional<std::string> query;
    std::optional<std::int64_t> limit;
};

void describe(auto& io, Is<ContactQuery> auto& query) {
    io.required("query", query.query);
    io.optional("limit", query.limit);
}

namespace {

constexpr std::int64_t usuallyFound = 5;

boost::json::array texts(const std::vector<std::string>& values) {
    boost::json::array array;
    for (const auto& value : values) array.emplace_back(value);
    return array;
}

boost::json::object entry(const Contact& contact) {
    return {{"id", contact.id},
            {"name", MacContactsService::nameOf(contact)},
            {"emails", texts(contact.emails)},
            {"phones", texts(contact.phones)}};
}

} // namespace

void ContactsTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    table.add(MacToolName::contactsFind, std::move(isOn), this, &ContactsTools::find);
}

Task<ToolOutcome> ContactsTools::find(ContactQuery query, ToolCall call) {
    if (!query.query) co_return ToolOutcome::refused("Chybí jméno kontaktu.");
    const auto contacts = co_await limit_.run(std::move(call.abandonment), [&](std::stop_token stop) {
        return contacts_.searchContacts(*std::move(query.query), query.limit.value_or(usuallyFound),
                                        std::move(stop));
    });
    if (!contacts) co_return ToolOutcome::refused(contacts.error());
    AnswerList entries;
    for (const auto& contact : *contacts) entries.add(entry(contact));
    co_return std::move(entries).outcome("contacts");
}

} // namespace morvex
