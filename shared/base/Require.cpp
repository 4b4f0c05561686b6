#include "shared/base/Require.h"

#include <cstdio>
#include <cstdlib>

namespace morvex {

void require(bool condition, const char* text, std::source_location where) {
    if (condition) [[likely]]
        return;
    std::fprintf(stderr, "%s:%u: %s\n", where.file_name(), static_cast<unsigned>(where.line()), text);
    std::abort();
}

} // namespace morvex
