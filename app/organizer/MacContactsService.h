#pragma once

#include "app/organizer/PersonalAccess.h"
#include "app/organizer/PersonalServiceError.h"
#include "platform/ports/ContactStore.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// The contacts of this computer, for reading alone. Owned by the feature; main thread only. The owner ends
/// all tasks before it destroys this object.
class MacContactsService {
  public:
    static constexpr std::int64_t mostContacts = 200;

    struct Services {
        ContactStore& store;
        Clock& clock;
    };

    explicit MacContactsService(Services services)
        : services_(services), access_(services.store, services.clock) {}

    [[nodiscard]] DataAccess authorizationStatus() const { return access_.status(); }

    [[nodiscard]] Sentence statusText() const;

    /// Why the contacts could not be asked the last time; for views.
    [[nodiscard]] const std::optional<Sentence>& accessError() const { return access_.error(); }

    /// `accessError` tells a failure.
    Task<void> requestAccess(std::stop_token stop = {}) { return access_.request(std::move(stop)); }

    /// Looks for a service that was out of reach. Opens no question to the user.
    Task<void> refresh(std::stop_token stop = {}) { return access_.look(std::move(stop)); }

    /// The first `limit` contacts of this name, at most `mostContacts`; a blank name finds none, and so does
    /// a limit below 1. Asks for access where that is open. Fails with `contactsAccess` or the words of the
    /// store.
    Task<Result<std::vector<Contact>>> searchContacts(std::string query, std::int64_t limit,
                                                      std::stop_token stop);

    /// Given and family name, else that of the organization.
    [[nodiscard]] static std::string nameOf(const Contact& contact);

    /// For views: called when the status or the error may have changed.
    [[nodiscard]] Connection onRowsChange(std::function<void()> call) {
        return access_.onChange(std::move(call));
    }

  private:
    Services services_;
    PersonalAccess access_;
};

} // namespace morvex
