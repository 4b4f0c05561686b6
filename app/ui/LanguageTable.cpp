#include "app/ui/LanguageTable.h"

#include <QLibraryInfo>

#include <utility>

namespace morvex {

LanguageTable::LanguageTable() {
    load(code_);
}

bool LanguageTable::take(const QString& code) {
    if (std::exchange(code_, code) == code) return false;
    load(code);
    return true;
}

QString LanguageTable::translate(const char* context, const char* source, const char* disambiguation,
                                 int count) const {
    // A sentence without plural forms is found only when looked up without the number.
    auto found = table_.translate("Morvex", source, nullptr, count);
    if (found.isNull()) found = table_.translate("Morvex", source);
    return found.isNull() ? toolkit_.translate(context, source, disambiguation, count) : found;
}

void LanguageTable::load(const QString& code) {
    (void)table_.load(QStringLiteral(":/languages/") + code + QStringLiteral(".qm"));
    (void)toolkit_.load(QStringLiteral("qtbase_") + code, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace morvex
