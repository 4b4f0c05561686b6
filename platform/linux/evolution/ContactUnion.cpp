#include "platform/linux/evolution/ContactUnion.h"

#include "foundation/Text.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace morvex {

namespace {

/// What two spellings of one number have in common.
std::string digitsOf(std::string_view number) {
    std::string digits;
    for (const char letter : number)
        if (letter >= '0' && letter <= '9') digits += letter;
    return digits.starts_with("00") ? digits.substr(2) : digits;
}

std::string addressKey(const std::string& address) {
    return "@" + foldCase(trim(address));
}

std::string numberKey(const std::string& number) {
    auto digits = digitsOf(number);
    return digits.empty() ? "#" + number : std::move(digits);
}

std::vector<std::string> keysOf(const Contact& contact) {
    std::vector<std::string> keys;
    for (const auto& email : contact.emails) keys.push_back(addressKey(email));
    for (const auto& phone : contact.phones)
        if (!digitsOf(phone).empty()) keys.push_back(numberKey(phone));
    return keys;
}

/// Which contacts are the same one: each points to an earlier one of its kind, the first one to itself.
class Kinds {
  public:
    explicit Kinds(std::size_t count) : earlier_(count) {
        for (std::size_t each = 0; each < count; ++each) earlier_[each] = each;
    }

    std::size_t first(std::size_t each) {
        while (earlier_[each] != each) each = earlier_[each] = earlier_[earlier_[each]];
        return each;
    }

    void join(std::size_t left, std::size_t right) {
        const auto [low, high] = std::minmax({first(left), first(right)});
        earlier_[high] = low;
    }

  private:
    std::vector<std::size_t> earlier_;
};

template <class Key>
void addMissing(std::vector<std::string>& known, const std::vector<std::string>& more, Key key) {
    std::set<std::string> have;
    for (const auto& each : known) have.insert(key(each));
    for (const auto& each : more)
        if (have.insert(key(each)).second) known.push_back(each);
}

void merge(Contact& into, const Contact& other) {
    addMissing(into.emails, other.emails, addressKey);
    addMissing(into.phones, other.phones, numberKey);
    if (into.organization.empty()) into.organization = other.organization;
}

} // namespace

std::string shownName(const Contact& contact) {
    const auto name = trim(contact.givenName + " " + contact.familyName);
    return name.empty() ? contact.organization : name;
}

std::vector<Contact> unified(std::vector<BookContact> found) {
    std::vector<std::tuple<std::string, std::string, std::size_t>> order; // folded name, id, place
    for (std::size_t each = 0; each < found.size(); ++each)
        order.emplace_back(fold(shownName(found[each].contact)), found[each].contact.id, each);
    std::ranges::sort(order);
    Kinds kinds(order.size());
    // The first one of each book that has this name and key.
    std::map<std::pair<std::string, std::string>, std::map<std::string, std::size_t>> holders;
    for (std::size_t each = 0; each < order.size(); ++each) {
        const auto& [name, id, place] = order[each];
        for (const auto& key : keysOf(found[place].contact)) {
            auto& books = holders[{name, key}];
            for (const auto& [book, holder] : books)
                if (book != found[place].book) kinds.join(each, holder);
            books.try_emplace(found[place].book, each);
        }
    }
    std::vector<Contact> contacts;
    std::map<std::size_t, std::size_t> places;
    for (std::size_t each = 0; each < order.size(); ++each) {
        auto& contact = found[std::get<2>(order[each])].contact;
        const auto [entry, isNew] = places.try_emplace(kinds.first(each), contacts.size());
        if (isNew)
            contacts.push_back(std::move(contact));
        else
            merge(contacts[entry->second], contact);
    }
    return contacts;
}

} // namespace morvex
