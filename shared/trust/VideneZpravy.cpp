#include "shared/trust/VideneZpravy.h"

namespace morvex {

void VideneZpravy::vloz(const std::string& msgID) {
    if (!mnozina_.insert(msgID).second) return;
    poradi_.push_back(msgID);
    if (poradi_.size() <= strop_) return;
    mnozina_.erase(poradi_.front());
    poradi_.pop_front();
}

} // namespace morvex
