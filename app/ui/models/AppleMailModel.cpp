#include "app/ui/models/AppleMailModel.h"

#include "app/ui/Localized.h"

#include <QVariantMap>

#include <algorithm>

namespace morvex {

AppleMailModel::AppleMailModel(MacMailAccounts& accounts, CompanionState& state, TaskScope& scope)
    : accounts_(accounts),
      scope_(scope),
      trouble_(state.settingsTrouble, [this] { refresh(); }),
      rows_(*this, [this] { return readRows(); }) {
    follow(accounts_.onChange([this] { refresh(); }));
}

QVariantList AppleMailModel::readRows() const {
    QVariantList rows;
    for (const auto& account : accounts_.available())
        rows.push_back(QVariantMap{{QStringLiteral("id"), QString::fromStdString(account)},
                                   {QStringLiteral("allowed"), accounts_.isAllowed(account)}});
    return rows;
}

QVariantList AppleMailModel::senders() const {
    QVariantList senders{QVariantMap{{QStringLiteral("name"), localized("Není vybrán"_sentence)},
                                     {QStringLiteral("account"), QString()}}};
    for (const auto& account : accounts_.povolene())
        senders.push_back(QVariantMap{{QStringLiteral("name"), QString::fromStdString(account)},
                                      {QStringLiteral("account"), QString::fromStdString(account)}});
    return senders;
}

int AppleMailModel::senderIndex() const {
    const auto allowed = accounts_.povolene();
    const auto& chosen = accounts_.defaultAccount();
    const auto place = chosen ? std::ranges::find(allowed, *chosen) : allowed.end();
    return place == allowed.end() ? 0 : static_cast<int>(place - allowed.begin()) + 1;
}

QString AppleMailModel::problem() const {
    return localized(accounts_.problem().value_or(Sentence()));
}

void AppleMailModel::setAllowed(const QString& account, bool allowed) {
    scope_.spawn(turn(account.toStdString(), allowed));
}

Task<void> AppleMailModel::turn(std::string account, bool allowed) {
    const auto kept = co_await accounts_.nastav(std::move(account), allowed);
    trouble_.note(kept);
}

void AppleMailModel::setSender(const QString& account) {
    accounts_.nastavVychozi(account.isEmpty() ? std::nullopt : std::optional(account.toStdString()));
}

} // namespace morvex
