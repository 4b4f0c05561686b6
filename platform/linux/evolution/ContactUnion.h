#pragma once

#include "platform/ports/ContactStore.h"

#include <string>
#include <vector>

namespace morvex {

/// A contact as one address book has it.
struct BookContact {
    std::string book; ///< its id
    Contact contact;
};

/// What is listed for it: given and family name, or the organization.
std::string shownName(const Contact& contact);

/// Sorted by name, case and diacritics aside. Contacts of the same name in different books are one if they
/// share an e-mail address, in any case, or the digits of a number; it has the addresses and numbers of all.
std::vector<Contact> unified(std::vector<BookContact> found);

} // namespace morvex
