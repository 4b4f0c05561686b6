#include "foundation/SystemError.h"

#include <cerrno>
#include <system_error>

namespace morvex {

std::string SystemError::popis() const {
    return std::generic_category().message(code);
}

int systemCode(const Error& error) {
    const auto* cause = error.as<SystemError>();
    return cause ? cause->code : 0;
}

bool saysMissing(int code) {
    return code == ENOENT || code == ENOTDIR || code == ELOOP || code == ENAMETOOLONG || code == EINVAL;
}

} // namespace morvex
