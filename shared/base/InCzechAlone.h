#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <utility>

namespace morvex {

/// For words shown only on the phone or a terminal; they are in no translation table.
inline Sentence inCzechAlone(std::string words) {
    return Sentence(std::move(words));
}

} // namespace morvex
