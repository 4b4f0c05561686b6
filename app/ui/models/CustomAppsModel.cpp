#include "app/ui/models/CustomAppsModel.h"

#include "app/ui/Localized.h"

#include <QVariantMap>

#include <utility>

namespace morvex {

CustomAppsModel::CustomAppsModel(MacCustomAppsService& service, CompanionState& state, TaskScope& scope)
    : service_(service),
      scope_(scope),
      trouble_(state.potizNastaveni, [this] { refresh(); }),
      rows_(*this, [this] { return readRows(); }) {
    follow(service_.priZmene([this] { refresh(); }));
}

QVariantList CustomAppsModel::readRows() const {
    QVariantList rows;
    for (const auto& app : service_.apps())
        rows.push_back(QVariantMap{
            {QStringLiteral("id"), QString::fromStdString(app.id)},
            {QStringLiteral("name"), QString::fromStdString(app.name)},
            {QStringLiteral("endpoint"), QString::fromStdString(app.endpoint)},
            {QStringLiteral("enabled"), app.enabled},
            {QStringLiteral("fromPhone"), app.comesFromIPhone},
        });
    return rows;
}

QString CustomAppsModel::error() const {
    return localized(error_);
}

void CustomAppsModel::setEnabled(const QString& id, bool enabled) {
    scope_.spawn(turn(id.toStdString(), enabled));
}

Task<void> CustomAppsModel::turn(std::string id, bool enabled) {
    const auto kept = co_await service_.setEnabled(std::move(id), enabled);
    trouble_.note(kept);
}

void CustomAppsModel::remove(const QString& id) {
    scope_.spawn(service_.remove(id.toStdString()));
}

void CustomAppsModel::save(const QString& id, const QString& name, const QString& endpoint,
                           const QString& token) {
    if (saving_) return;
    saving_ = true;
    error_ = {};
    refresh();
    auto stored = id.isEmpty() ? std::nullopt : std::optional(id.toStdString());
    scope_.spawn(
        keep(editor_, std::move(stored), name.toStdString(), endpoint.toStdString(), token.toStdString()));
}

void CustomAppsModel::startEditing() {
    ++editor_;
    error_ = {};
    refresh();
}

Task<void> CustomAppsModel::keep(int asker, std::optional<std::string> id, std::string name,
                                 std::string endpoint, std::string token) {
    auto kept = co_await service_.save(std::move(id), std::move(name), std::move(endpoint), std::move(token));
    saving_ = false;
    const bool stillOpen = asker == editor_;
    if (stillOpen && !kept) error_ = kept.error().popis();
    refresh();
    if (stillOpen && kept) Q_EMIT saved();
}

} // namespace morvex
