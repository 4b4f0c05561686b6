#include "foundation/SystemError.h"

#include <system_error>

namespace morvex {

std::string SystemError::popis() const {
    return std::generic_category().message(code);
}

int systemCode(const Error& error) {
    const auto* cause = error.as<SystemError>();
    return cause ? cause->code : 0;
}

} // namespace morvex
