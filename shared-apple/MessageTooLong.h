#pragma once

#include <string>

namespace morvex {

/// The message makes a frame beyond `frameLimit`. Nothing was sent, and the link stays.
struct MessageTooLong {
    [[nodiscard]] std::string popis() const { return "Zpráva je na přenos příliš dlouhá."; }

    bool operator==(const MessageTooLong&) const = default;
};

} // namespace morvex
