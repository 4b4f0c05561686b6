#pragma once

#include "shared/wire/Codec.h"

#include <string>

namespace morvex {

/// One message as a script tells of it.
struct MailZprava {
    std::string id = {};
    std::string ucet = {};
    std::string slozka = {};
    std::string od = {};
    std::string predmet = {}; ///< not empty once it is read
    std::string datum = {};   ///< as Mail prints it
    bool precteno = true;
    std::string ukazka = {}; ///< the beginning of the text

    bool operator==(const MailZprava&) const = default;
};

extern template struct Codec<MailZprava>;

} // namespace morvex
