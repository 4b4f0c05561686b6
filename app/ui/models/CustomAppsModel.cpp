#include "app/ui/models/CustomAppsModel.h"

#include "app/customapps/ToolNews.h"
#include "app/ui/Localized.h"

#include <QVariantMap>

#include <utility>

namespace morvex {

namespace {

QString connected(const std::optional<AppOutcome>& outcome) {
    return outcome && !outcome->failure ? localized(outcome->popis()) : QString();
}

QString failed(const std::optional<AppOutcome>& outcome) {
    return outcome && outcome->failure ? localized(outcome->popis()) : QString();
}

QVariantMap newsRow(const SeenTool& tool) {
    const auto news = toolNews(tool);
    const auto lines = [](const std::string& description, const std::string& schema) {
        return QString::fromStdString(description + '\n' + schema).trimmed();
    };
    return {{QStringLiteral("name"), QString::fromStdString(news.name)},
            {QStringLiteral("isNew"), news.isNew},
            {QStringLiteral("isPast"), news.isPast},
            {QStringLiteral("before"), lines(news.before, news.schemaBefore)},
            {QStringLiteral("after"), lines(news.after, news.schemaAfter)}};
}

} // namespace

CustomAppsModel::CustomAppsModel(MacCustomAppsService& service, CompanionState& state, TaskScope& scope)
    : service_(service),
      scope_(scope),
      trouble_(state.settingsTrouble, [this] { refresh(); }),
      rows_(*this, [this] { return readRows(); }) {
    follow(service_.onRowsChange([this] { refresh(); }));
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
            {QStringLiteral("outcome"), connected(app.outcome)},
            {QStringLiteral("failure"), failed(app.outcome)},
            {QStringLiteral("news"), static_cast<int>(app.news)},
            {QStringLiteral("holdsChanges"), app.holdsChanges},
        });
    return rows;
}

QString CustomAppsModel::error() const {
    return localized(error_);
}

QString CustomAppsModel::trouble() const {
    if (const auto text = trouble_.text(); !text.isEmpty()) return text;
    return localized(service_.problem().value_or(Sentence()));
}

void CustomAppsModel::askAgain() {
    service_.refreshSoon();
}

QVariantList CustomAppsModel::newsOf(const QString& id) {
    shown_ = service_.news(id.toStdString());
    QVariantList rows;
    for (const auto& tool : shown_) rows.push_back(newsRow(tool));
    return rows;
}

void CustomAppsModel::looked(const QString& id) {
    service_.looked(id.toStdString(), shown_);
}

void CustomAppsModel::setHoldsChanges(const QString& id, bool holds) {
    service_.setHoldsChanges(id.toStdString(), holds);
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
