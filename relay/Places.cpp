#include "relay/Places.h"

#include <algorithm>

namespace morvex {

Places::Bounds Places::Bounds::of(std::size_t connections, std::chrono::steady_clock::duration silence) {
    const auto part = [&](std::size_t divisor) { return std::max<std::size_t>(1, connections / divisor); };
    return {.all = connections,
            .guests = part(2),
            .newPairs = part(2),
            .loggedIn = connections - connections / 8,
            .site = part(8),
            .network = part(4),
            .silence = silence};
}

Places::Place::~Place() {
    if (!places_) return;
    const auto holder = places_->holders_.find(number_);
    if (holder != places_->holders_.end()) places_->remove(holder);
}

void Places::Place::onEviction(std::function<void()> close) {
    const auto holder = places_->holders_.find(number_);
    if (holder != places_->holders_.end()) holder->second.close = std::move(close);
}

void Places::Place::hasSpoken() {
    places_->silent_.erase(number_);
}

bool Places::Place::rise(Standing standing) {
    return places_->rise(number_, standing);
}

std::optional<Places::Place> Places::enter(const Origin& origin, Moment now) {
    if (origin.isLimited() && !makeRoomAround(origin)) return std::nullopt;
    if (!makeRoomForGuest()) return std::nullopt;
    const auto number = ++last_;
    const auto& holder = holders_[number] = {.origin = origin, .since = now};
    silent_.insert(number);
    count(number, holder);
    return std::make_optional<Place>(*this, number, origin);
}

bool Places::makeRoomAround(const Origin& origin) {
    const auto site = origin.site();
    if (sites_.sizeOf(site) >= bounds_.site && !evictOldestGuest(guestsBySite_.of(site))) return false;
    const auto network = origin.network();
    std::size_t neighbours = 0;
    for (const auto& crowd : networks_) neighbours += crowd.sizeOf(network);
    return neighbours < bounds_.network || evictOldestGuest(networksOf(Standing::guest).of(network));
}

bool Places::makeRoomForGuest() {
    const auto& guests = networksOf(Standing::guest);
    if (guests.size() < bounds_.guests && taken() < bounds_.all) return true;
    return guests.size() > 0 && evictOldestGuest(&guests.fullest());
}

bool Places::rise(Crowd::Number number, Standing standing) {
    const auto found = holders_.find(number);
    if (found == holders_.end() || !makeRoomFor(standing, found->second.origin.network())) return false;
    auto holder = std::move(found->second);
    remove(found);
    holder.standing = standing;
    count(number, holders_[number] = std::move(holder));
    return true;
}

bool Places::makeRoomFor(Standing standing, const Prefix& network) {
    const auto& newPairs = networksOf(Standing::newPair);
    const auto& knownPairs = networksOf(Standing::knownPair);
    const bool isFull = newPairs.size() + knownPairs.size() >= bounds_.loggedIn;
    const bool isNew = standing == Standing::newPair;
    if (!isFull && !(isNew && newPairs.size() >= bounds_.newPairs)) return true;
    // A known pair evicts a new one; among equals only a network that has more places loses one.
    const auto& crowd = newPairs.size() > 0 ? newPairs : knownPairs;
    if (crowd.size() == 0 || (isNew && &crowd == &knownPairs)) return false;
    const bool isAmongEquals = isNew || &crowd == &knownPairs;
    if (isAmongEquals && crowd.fullest().size() <= crowd.sizeOf(network) + 1) return false;
    // Evicts the newest, so that earlier connections from the same network stay.
    evict(*crowd.fullest().rbegin());
    return true;
}

void Places::endSilent(Moment now) {
    while (!silent_.empty() && now - holders_.at(*silent_.begin()).since > bounds_.silence)
        evict(*silent_.begin());
}

bool Places::evictOldestGuest(const std::set<Crowd::Number>* guests) {
    if (!guests) return false;
    evict(*guests->begin());
    return true;
}

void Places::evict(Crowd::Number number) {
    const auto holder = holders_.find(number);
    const auto close = std::move(holder->second.close);
    remove(holder);
    if (close) close();
}

void Places::count(Crowd::Number number, const Holder& holder) {
    networksOf(holder.standing).add(holder.origin.network(), number);
    sites_.add(holder.origin.site(), number);
    if (holder.standing == Standing::guest) guestsBySite_.add(holder.origin.site(), number);
}

void Places::remove(std::map<Crowd::Number, Holder>::iterator holder) {
    const auto& [number, held] = *holder;
    networksOf(held.standing).remove(held.origin.network(), number);
    sites_.remove(held.origin.site(), number);
    guestsBySite_.remove(held.origin.site(), number);
    silent_.erase(number);
    holders_.erase(holder);
}

} // namespace morvex
