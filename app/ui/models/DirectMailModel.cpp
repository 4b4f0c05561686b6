#include "app/ui/models/DirectMailModel.h"

#include "app/ui/Localized.h"

#include <utility>

namespace morvex {

namespace {

using State = MacSMTPService::AccountState;

QString statusOf(const State& state) {
    if (state.kind == State::Case::testing) return localized("Ověřuji…"_sentence);
    return state.kind == State::Case::ready ? localized("Ověřeno"_sentence) : QString();
}

QString failureOf(const State& state, const MacSMTPAccount& account) {
    if (!account.isComplete()) return localized("Chybí adresa nebo server."_sentence);
    return state.kind == State::Case::failed ? localized(state.message) : QString();
}

std::string text(const QVariantMap& fields, const char* name) {
    return fields.value(QLatin1String(name)).toString().toStdString();
}

} // namespace

DirectMailModel::DirectMailModel(MacSMTPService& service, CompanionState& state, TaskScope& scope)
    : service_(service),
      scope_(scope),
      trouble_(state.settingsTrouble, [this] { refresh(); }),
      rows_(*this, [this] { return readRows(); }) {
    follow(service_.onChange([this] { refresh(); }));
}

QVariantList DirectMailModel::readRows() const {
    QVariantList rows;
    for (const auto& account : service_.accounts()) rows.push_back(rowOf(account));
    return rows;
}

QVariantMap DirectMailModel::rowOf(const MacSMTPAccount& account) const {
    const auto state = service_.state(account.id);
    return {{QStringLiteral("id"), QString::fromStdString(account.id)},
            {QStringLiteral("label"), QString::fromStdString(account.label)},
            {QStringLiteral("address"), QString::fromStdString(account.address)},
            {QStringLiteral("senderName"), QString::fromStdString(account.senderName)},
            {QStringLiteral("imapHost"), QString::fromStdString(account.imapHost)},
            {QStringLiteral("smtpHost"), QString::fromStdString(account.smtpHost)},
            {QStringLiteral("name"), QString::fromStdString(account.shownName())},
            {QStringLiteral("isDefault"), service_.defaultAccountID() == account.id},
            {QStringLiteral("isTesting"), state.kind == State::Case::testing},
            {QStringLiteral("status"), statusOf(state)},
            {QStringLiteral("failure"), failureOf(state, account)}};
}

QString DirectMailModel::error() const {
    return localized(error_);
}

void DirectMailModel::save(const QVariantMap& fields, const QString& password, bool test) {
    if (saving_) return;
    saving_ = true;
    error_ = {};
    refresh();
    MacSMTPAccount account{text(fields, "id"),         text(fields, "label"),    text(fields, "address"),
                           text(fields, "senderName"), text(fields, "imapHost"), text(fields, "smtpHost")};
    scope_.spawn(keep(editor_, std::move(account), password.toStdString(), test));
}

Task<void> DirectMailModel::keep(int asker, MacSMTPAccount account, std::string password, bool test) {
    auto kept = co_await service_.ulozit(std::move(account), std::move(password));
    saving_ = false;
    const bool stillOpen = asker == editor_;
    if (stillOpen && !kept) error_ = kept.error().popis();
    refresh();
    if (!kept) co_return;
    if (stillOpen) Q_EMIT saved();
    if (test) co_await service_.otestovat(*kept);
}

void DirectMailModel::remove(const QString& id) {
    scope_.spawn(service_.odstranit(id.toStdString()));
}

void DirectMailModel::setDefault(const QString& id) {
    service_.nastavVychozi(id.toStdString());
}

void DirectMailModel::test(const QString& id) {
    scope_.spawn(service_.otestovat(id.toStdString()));
}

void DirectMailModel::startEditing() {
    ++editor_;
    error_ = {};
    refresh();
}

} // namespace morvex
