#pragma once

#include <boost/asio/ip/address.hpp>

#include <array>
#include <compare>
#include <cstdint>

namespace morvex {

/// A range of addresses that share their first `length` bits. IPv4 is mapped to ::ffff:0:0/96 (RFC 4291,
/// section 2.5.5.2), so no range contains addresses of both kinds.
struct Prefix {
    std::array<std::uint8_t, 16> bytes{}; ///< zero after the first `length` bits
    unsigned length = 0;

    auto operator<=>(const Prefix&) const = default;
};

/// The address of a connection, in the precision that the limits need.
class Origin {
  public:
    /// The prefix length, in bits, that makes a range of each kind of address.
    struct Range {
        unsigned ipv4;
        unsigned ipv6;
    };

    /// Limits by address do not apply to this computer itself, where a proxy may connect for everybody,
    /// unless they are asked to.
    enum class ThisComputer { unlimited, limited };

    static Origin of(boost::asio::ip::address address, ThisComputer local = ThisComputer::unlimited);

    [[nodiscard]] bool isLimited() const { return isLimited_; }

    [[nodiscard]] Prefix within(Range range) const;

    /// The smallest range that one customer of a network has: an IPv4 address or an IPv6 /56.
    [[nodiscard]] Prefix site() const { return within({32, 56}); }

    /// The smallest range that one network has, and that a generous provider gives to one customer: an IPv4
    /// /24 or an IPv6 /32.
    [[nodiscard]] Prefix network() const { return within({24, 32}); }

  private:
    boost::asio::ip::address_v6::bytes_type bytes_{};
    bool isIpv4_ = false;
    bool isLimited_ = true;
};

} // namespace morvex
