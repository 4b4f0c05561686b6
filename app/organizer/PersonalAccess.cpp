#include "app/organizer/PersonalAccess.h"

#include "app/organizer/PersonalServiceError.h"
#include "foundation/LimitedStop.h"

#include <utility>

namespace morvex {

PersonalAccess::PersonalAccess(PersonalDataStore& store, Clock& clock)
    : store_(store), clock_(clock), storeChanged_(store.onChange([this] {
          // What is in reach again has no trouble.
          if (isFull()) error_.reset();
          changed_.tell();
      })) {}

void PersonalAccess::setError(std::optional<Sentence> error) {
    error_ = std::move(error);
    changed_.tell();
}

bool PersonalAccess::isOpen() const {
    return status() == DataAccess::notDetermined || status() == DataAccess::restricted;
}

Task<void> PersonalAccess::request(std::stop_token stop) {
    // A person may think as long as they like.
    if (store_.asksUser()) co_return co_await ask(std::move(stop));
    const LimitedStop limited(clock_, patience, std::move(stop));
    co_await ask(limited.token());
}

Task<void> PersonalAccess::ensure(std::stop_token stop) {
    if (isOpen()) co_return co_await ask(std::move(stop));
    if (error_) setError(std::nullopt);
}

Task<void> PersonalAccess::look(std::stop_token stop) {
    if (status() == DataAccess::notDetermined && store_.asksUser()) co_return;
    co_await ensure(std::move(stop));
}

Task<void> PersonalAccess::ask(std::stop_token stop) {
    const auto asked = co_await store_.requestAccess(stop);
    if (asked)
        setError(std::nullopt);
    else if (stop.stop_requested())
        setError(PersonalServiceError{PersonalServiceError::Case::noAnswer}.popis());
    else
        setError(asked.error().popis());
}

} // namespace morvex
