#pragma once

#include <boost/asio/ip/address.hpp>

#include <array>
#include <compare>
#include <cstdint>

namespace morvex {

/// A range of addresses: those that begin with the same `length` bits. IPv4 lies in ::ffff:0:0/96 (RFC 4291,
/// section 2.5.5.2), so that no range holds addresses of both kinds.
struct Prefix {
    std::array<std::uint8_t, 16> bytes{}; ///< zero behind the first `length` bits
    unsigned length = 0;

    auto operator<=>(const Prefix&) const = default;
};

/// Where a connection comes from, as far as limits tell addresses apart.
class Origin {
  public:
    /// How many bits of an address of each kind make one range.
    struct Range {
        unsigned ipv4;
        unsigned ipv6;
    };

    /// The limits by address do not hold for this computer itself, where a proxy speaks for everybody, unless
    /// they are asked to.
    enum class ThisComputer { unlimited, limited };

    static Origin of(boost::asio::ip::address address, ThisComputer local = ThisComputer::unlimited);

    [[nodiscard]] bool isLimited() const { return isLimited_; }

    [[nodiscard]] Prefix within(Range range) const;

    /// What one customer of a network has at least: an IPv4 address, or an IPv6 /56.
    [[nodiscard]] Prefix site() const { return within({32, 56}); }

    /// What one network has at least, and a generous provider gives to one customer: an IPv4 /24 or an IPv6
    /// /32.
    [[nodiscard]] Prefix network() const { return within({24, 32}); }

  private:
    boost::asio::ip::address_v6::bytes_type bytes_{};
    bool isIpv4_ = false;
    bool isLimited_ = true;
};

} // namespace morvex
