#pragma once

#include <cstdint>
#include <string>

namespace morvex {

/// How a program that was started has ended.
struct VysledekProcesu {
    std::int32_t navratovyKod = 0; ///< or the number of the signal that ended it
    std::string vystup;            ///< standard output; invalid UTF-8 is repaired
    bool isOutputCut = false;      ///< there was more than the caller wanted to keep
    std::string chyby;             ///< standard error, likewise
    bool zruseno = false;          ///< somebody cancelled it, or this program is ending
    bool vyprselCas = false;       ///< the time limit was exceeded
};

} // namespace morvex
