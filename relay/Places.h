#pragma once

#include "relay/Crowd.h"
#include "relay/Origin.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace morvex {

/// Assigns the relay's places to connections. A connection enters as a guest, sends its first byte, and rises
/// by its login. When places run out, the network that holds the most loses one first, so that somebody who
/// takes many evicts himself. Every call takes logarithmic time. No networking here; one thread.
class Places {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    enum class Standing {
        guest,    ///< has not logged in
        newPair,  ///< logged in for a recently made pair, which anybody can make
        knownPair ///< logged in for any other pair
    };

    /// The limits for each kind.
    struct Bounds {
        std::size_t all;
        std::size_t guests;
        std::size_t newPairs;
        std::size_t loggedIn; ///< new and known pairs; the rest is for guests, perhaps of known pairs
        std::size_t site;     ///< per site, whatever their standing
        std::size_t network;
        std::chrono::steady_clock::duration silence; ///< time for a guest's first byte

        static Bounds of(std::size_t connections, std::chrono::steady_clock::duration silence);
    };

    /// The place of one connection; its destructor frees the place. It must not outlive `Places`.
    class Place {
      public:
        Place(Places& places, Crowd::Number number, const Origin& origin)
            : places_(&places), number_(number), origin_(origin) {}

        Place(Place&& other) noexcept
            : places_(std::exchange(other.places_, nullptr)),
              number_(other.number_),
              origin_(other.origin_) {}

        Place& operator=(Place&&) = delete;
        ~Place();

        [[nodiscard]] const Origin& origin() const { return origin_; }

        /// `close` ends the connection when its place is taken away. The place counts as free from then on.
        void onEviction(std::function<void()> close);
        /// The first byte has arrived.
        void hasSpoken();
        /// The connection has logged in. Returns false when there is no place for it.
        [[nodiscard]] bool rise(Standing standing);

      private:
        Places* places_;
        Crowd::Number number_;
        Origin origin_;
    };

    explicit Places(const Bounds& bounds) : bounds_(bounds) {}

    Places(const Places&) = delete;
    Places& operator=(const Places&) = delete;

    /// Nothing when there is no place for another guest of this origin.
    std::optional<Place> enter(const Origin& origin, Moment now);
    /// Evicts the guests that have been silent for too long.
    void endSilent(Moment now);

    [[nodiscard]] std::size_t taken() const { return holders_.size(); }

  private:
    struct Holder {
        Origin origin;
        Standing standing = Standing::guest;
        Moment since;
        std::function<void()> close{};
    };

    Crowd& networksOf(Standing standing) { return networks_.at(static_cast<std::size_t>(standing)); }

    bool makeRoomAround(const Origin& origin);
    bool makeRoomForGuest();
    bool makeRoomFor(Standing standing, const Prefix& network);
    bool rise(Crowd::Number number, Standing standing);
    /// Returns false if `guests` is null.
    bool evictOldestGuest(const std::set<Crowd::Number>* guests);
    void evict(Crowd::Number number);
    void count(Crowd::Number number, const Holder& holder);
    void remove(std::map<Crowd::Number, Holder>::iterator holder);

    const Bounds bounds_;
    Crowd::Number last_ = 0;
    std::map<Crowd::Number, Holder> holders_;
    std::set<Crowd::Number> silent_; ///< guests without a first byte
    std::array<Crowd, 3> networks_;  ///< one for each standing
    Crowd guestsBySite_;
    Crowd sites_; ///< all connections
};

} // namespace morvex
