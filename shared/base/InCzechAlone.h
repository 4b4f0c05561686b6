#pragma once

#include "shared/base/Sentence.h"

#include <string>
#include <utility>

namespace morvex {

/// Words that only the phone or a terminal tells: they are in no table of languages.
inline Sentence inCzechAlone(std::string words) {
    return Sentence(std::move(words));
}

} // namespace morvex
