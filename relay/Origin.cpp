#include "relay/Origin.h"

#include <algorithm>

namespace morvex {

namespace asio = boost::asio;

namespace {

constexpr unsigned mappedBits = 96;

} // namespace

Origin Origin::of(asio::ip::address address, ThisComputer local) {
    if (address.is_v6() && address.to_v6().is_v4_mapped())
        address = asio::ip::make_address_v4(asio::ip::v4_mapped, address.to_v6());
    Origin origin;
    origin.isIpv4_ = address.is_v4();
    origin.isLimited_ = !address.is_loopback() || local == ThisComputer::limited;
    origin.bytes_ = origin.isIpv4_
                        ? asio::ip::make_address_v6(asio::ip::v4_mapped, address.to_v4()).to_bytes()
                        : address.to_v6().to_bytes();
    return origin;
}

Prefix Origin::within(Range range) const {
    Prefix prefix;
    prefix.length = isIpv4_ ? mappedBits + range.ipv4 : range.ipv6;
    const auto whole = prefix.length / 8;
    std::copy_n(bytes_.begin(), whole, prefix.bytes.begin());
    if (const auto rest = prefix.length % 8; rest != 0)
        prefix.bytes.at(whole) = static_cast<std::uint8_t>(bytes_.at(whole) & (0xFF00U >> rest));
    return prefix;
}

} // namespace morvex
