#include "app/ui/models/RecordTitle.h"

#include "app/ui/ShortDate.h"
#include "foundation/Text.h"

namespace morvex {

RecordTitle RecordTitle::of(const Uuid& id, const std::string& title, Date changed) {
    return {QString::fromStdString(id.text()),
            QString::fromStdString(std::string(firstBytes(title, longestTitle))), changed};
}

QString RecordTitle::date() const {
    return shortDate(changed);
}

} // namespace morvex
