#pragma once

#include "shared/base/Sentence.h"

namespace morvex {

/// The message would make a frame longer than `frameLimit`. Nothing was sent, and the link stays up.
struct MessageTooLong {
    [[nodiscard]] Sentence popis() const { return "Zpráva je na přenos příliš dlouhá."_sentence; }

    bool operator==(const MessageTooLong&) const = default;
};

} // namespace morvex
