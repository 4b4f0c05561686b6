#include "shared/base/SystemError.h"

#include "shared/base/SystemTrouble.h"

#include <cerrno>

namespace morvex {

Sentence SystemError::popis() const {
    return morvex::popis(troubleOf(code));
}

int systemCode(const Error& error) {
    const auto* cause = error.as<SystemError>();
    return cause ? cause->code : 0;
}

bool saysMissing(int code) {
    return code == ENOENT || code == ENOTDIR || code == ELOOP || code == ENAMETOOLONG || code == EINVAL;
}

} // namespace morvex
