#include "app/ui/LanguageTable.h"

#include <utility>

namespace morvex {

bool LanguageTable::take(const QString& code) {
    if (std::exchange(code_, code) == code) return false;
    (void)table_.load(QStringLiteral(":/languages/") + code + QStringLiteral(".qm"));
    return true;
}

QString LanguageTable::translate(const char*, const char* source, const char*, int) const {
    return table_.translate("Morvex", source);
}

} // namespace morvex
