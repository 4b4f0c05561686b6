#pragma once

#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// Why an address that a person typed is not taken.
struct RelayAddressRefused {
    std::string corrected; ///< what was probably meant; empty when nobody can tell

    [[nodiscard]] Sentence popis() const;
    bool operator==(const RelayAddressRefused&) const = default;
};

/// The base address of a relay, and the addresses below it.
class RelayAddress {
  public:
    /// What the user is told of a text that is no address at all.
    static constexpr auto nonsense = "Adresa relaye nedává smysl."_sentence;

    /// What the user is told when the address that was kept with the peer cannot be parsed.
    static constexpr auto keptOneIsUnusable = "Uložená adresa relaye nedává smysl."_sentence;

    /// Nothing when the text is no URI (RFC 3986) or has no host.
    static std::optional<RelayAddress> parse(std::string_view text);

    /// The address that a person typed, which the network can use: http or https, without a user, with a port
    /// from 1 to 65535. Fails with `RelayAddressRefused`.
    static Result<RelayAddress> entered(std::string_view typed);

    /// For the calls over HTTP: `path`, one of `relayPaths`, appended to the base path.
    [[nodiscard]] std::string call(std::string_view path) const;

    /// For the socket: "wss" when the base address has "https", else "ws"; path `relayPaths::socket` with
    /// the protocol version.
    [[nodiscard]] std::string socket() const;

    /// Whether only programs of this computer can reach a relay there.
    [[nodiscard]] bool isThisComputer() const;

    /// As it was given.
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    explicit RelayAddress(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

} // namespace morvex
