#pragma once

#include "platform/ports/PersonalDataStore.h"

#include <cstddef>
#include <string>
#include <vector>

namespace morvex {

/// A person or a company. The same one from several address books is one contact.
struct Contact {
    std::string id; ///< opaque
    std::string givenName;
    std::string familyName;
    std::string organization;
    std::vector<std::string> emails;
    std::vector<std::string> phones;

    bool operator==(const Contact&) const = default;
};

/// The address books that the desktop has. Every operation ends when `stop` is requested, also if the service
/// behind it hangs. A failure has the service's own words, which are never empty. Main thread only.
class ContactStore : public PersonalDataStore {
  public:
    /// The first `limit` contacts whose names have all words of `name`, in any order, regardless of case and
    /// diacritics. A text without a word finds none.
    virtual Task<Result<std::vector<Contact>>> named(std::string name, std::size_t limit,
                                                     std::stop_token stop) = 0;
};

} // namespace morvex
