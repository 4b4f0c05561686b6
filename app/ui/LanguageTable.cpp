#include "app/ui/LanguageTable.h"

#include <utility>

namespace morvex {

namespace {

constexpr const char* oneContext = "Morvex";

std::string codeInForce(const UserDefaults& defaults) {
    const std::string czech = "cs";
    if (!defaults.boolean("app.language.receivedFromPhone").value_or(false)) return czech;
    return defaults.text("app.language").value_or(czech);
}

} // namespace

LanguageTable::LanguageTable(const UserDefaults& defaults) : defaults_(defaults) {
    update();
}

bool LanguageTable::update() {
    auto code = QString::fromStdString(codeInForce(defaults_));
    if (std::exchange(code_, code) == code) return false;
    // Without a table, as for Czech, every sentence stands for itself.
    (void)table_.load(QStringLiteral(":/languages/") + code + QStringLiteral(".qm"));
    return true;
}

QString LanguageTable::translate(const char*, const char* source, const char*, int) const {
    return table_.translate(oneContext, source);
}

} // namespace morvex
