#include "fuzz/MemoryFolder.h"
#include "platform/linux/XdgFolders.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"
#include "tests/support/EnvironmentValue.h"

#include <cstddef>
#include <cstdint>

/// The desktop's own file of the user's folders.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morvex;
    static const MemoryFolder folder;
    static const EnvironmentValue home("HOME", folder.path().string());
    static const EnvironmentValue configuration("XDG_CONFIG_HOME", folder.path().string());
    folder.write("user-dirs.dirs", asText({data, size}));
    const auto desktop = XdgFolders().desktop();
    if (!desktop) return 0;
    require(desktop->starts_with('/') && !desktop->contains('\0') && !desktop->contains('\n'),
            "a desktop without a place");
    std::error_code missing;
    require(!std::filesystem::equivalent(*desktop, folder.path(), missing), "the home folder is the desktop");
    return 0;
}
