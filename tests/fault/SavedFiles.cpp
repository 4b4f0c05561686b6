#include "tests/fault/SavedFiles.h"

namespace morvex {

std::vector<SavedFile> savedFiles() {
    std::vector<SavedFile> all;
    for (const auto& files : {filesOfStores(), filesOverDamagedOnes(), filesOfSettings(), filesOfSecrets(),
                              filesOfPhoneAndRelay()})
        all.insert(all.end(), files.begin(), files.end());
    return all;
}

} // namespace morvex
