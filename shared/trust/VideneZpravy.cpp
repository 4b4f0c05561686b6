#include "shared/trust/VideneZpravy.h"

namespace morvex {

bool VideneZpravy::obsahuje(std::string_view msgID) const {
    return mnozina_.contains(sha256(asBytes(msgID)));
}

void VideneZpravy::insert(std::string_view msgID) {
    const auto digest = sha256(asBytes(msgID));
    if (!mnozina_.insert(digest).second) return;
    poradi_.push_back(digest);
    if (poradi_.size() <= strop_) return;
    mnozina_.erase(poradi_.front());
    poradi_.pop_front();
}

} // namespace morvex
