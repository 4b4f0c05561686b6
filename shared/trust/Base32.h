#pragma once

#include "shared/base/Bytes.h"

#include <concepts>
#include <ranges>
#include <string>

/// Base32 with the upper-case alphabet of RFC 4648, section 6, always without padding. There is no decoder,
/// since such texts are only compared.
namespace morvex::Base32 {

/// Takes one byte at a time; `text()` finishes the encoding.
class Encoder {
  public:
    void add(std::uint8_t byte);
    [[nodiscard]] std::string text() &&;

  private:
    std::string text_;
    std::uint32_t held_ = 0;
    int heldBits_ = 0;
};

template <std::ranges::input_range Sequence>
    requires std::same_as<std::ranges::range_value_t<Sequence>, std::uint8_t>
std::string encode(Sequence&& bytes) {
    Encoder encoder;
    for (std::uint8_t byte : bytes) encoder.add(byte);
    return std::move(encoder).text();
}

std::string encode(ByteView bytes);

} // namespace morvex::Base32
