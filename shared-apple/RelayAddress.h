#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// The base address of a relay, and the addresses below it.
class RelayAddress {
  public:
    /// What the user is told when an address that was given cannot be parsed.
    static constexpr const char* isUnusable = "Adresa relaye nedává smysl.";
    /// What the user is told when the address that was kept with the peer cannot be parsed.
    static constexpr const char* keptOneIsUnusable = "Uložená adresa relaye nedává smysl.";

    /// Nothing when the text is no URI (RFC 3986) or has no host.
    static std::optional<RelayAddress> parse(std::string_view text);

    /// For the calls over HTTP: `path`, one of `relayPaths`, appended to the base path.
    [[nodiscard]] std::string call(std::string_view path) const;

    /// For the socket: "wss" when the base address has "https", else "ws"; path `relayPaths::socket` with
    /// the protocol version.
    [[nodiscard]] std::string socket() const;

    /// As it was given.
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    explicit RelayAddress(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

} // namespace morvex
