#pragma once

#include "shared/base/Sentence.h"

#include <utility>
#include <variant>

namespace morvex {

/// Why a conversation with a mail server failed.
struct MacMailProtocolError {
    struct Connection {
        Sentence text;
        bool operator==(const Connection&) const = default;
    };

    struct ProtocolError {
        Sentence text;
        bool operator==(const ProtocolError&) const = default;
    };

    struct Login {
        bool operator==(const Login&) const = default;
    };

    struct InvalidAddress {
        bool operator==(const InvalidAddress&) const = default;
    };

    std::variant<Connection, ProtocolError, Login, InvalidAddress> value;

    static MacMailProtocolError connection(Sentence text) { return {Connection{std::move(text)}}; }

    static MacMailProtocolError protocolError(Sentence text) { return {ProtocolError{std::move(text)}}; }

    static MacMailProtocolError login() { return {Login{}}; }

    static MacMailProtocolError invalidAddress() { return {InvalidAddress{}}; }

    [[nodiscard]] Sentence popis() const;
    bool operator==(const MacMailProtocolError&) const = default;
};

} // namespace morvex
