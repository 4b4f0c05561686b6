#include "app/ui/models/ViewModel.h"

namespace morvex {

void ViewModel::refresh() {
    Q_EMIT changed();
}

} // namespace morvex
