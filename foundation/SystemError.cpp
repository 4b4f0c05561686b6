#include "foundation/SystemError.h"

#include <system_error>

namespace morvex {

std::string SystemError::popis() const {
    return std::generic_category().message(code);
}

} // namespace morvex
