#pragma once

#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// Why an address that the user typed is refused.
struct RelayAddressRefused {
    std::string corrected; ///< what was probably meant; empty if unknown

    [[nodiscard]] Sentence popis() const;
    bool operator==(const RelayAddressRefused&) const = default;
};

/// The base address of a relay, and the addresses below it.
class RelayAddress {
  public:
    /// Shown to the user for a text that is not an address.
    static constexpr auto nonsense = "Adresa relaye nedává smysl."_sentence;

    /// Shown to the user when the address stored with the peer cannot be parsed.
    static constexpr auto keptOneIsUnusable = "Uložená adresa relaye nedává smysl."_sentence;

    /// Returns nothing when the text is not a URI (RFC 3986) or has no host.
    static std::optional<RelayAddress> parse(std::string_view text);

    /// An address as the user typed it, which the network must be able to use: http or https, without a user
    /// name, with a port from 1 to 65535. Fails with `RelayAddressRefused`.
    static Result<RelayAddress> entered(std::string_view typed);

    /// The address of an HTTP call: `path`, one of `relayPaths`, appended to the base path.
    [[nodiscard]] std::string call(std::string_view path) const;

    /// The address of the socket: "wss" if the base address has "https", else "ws"; the path is
    /// `relayPaths::socket` with the protocol version.
    [[nodiscard]] std::string socket() const;

    /// Whether a relay at this address can be reached only from this computer.
    [[nodiscard]] bool isThisComputer() const;

    /// The address as it was given.
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    explicit RelayAddress(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

} // namespace morvex
