#include "platform/posix/OwnEnvironment.h"

#include <unistd.h>

namespace morvex {

Environment ownEnvironment() {
    Environment variables;
    for (char** entry = environ; entry && *entry; ++entry) {
        std::string_view text(*entry);
        // Of two entries with the same name, programs see the first.
        if (auto end = text.find('='); end != std::string_view::npos && end > 0)
            variables.emplace(text.substr(0, end), text.substr(end + 1));
    }
    return variables;
}

} // namespace morvex
