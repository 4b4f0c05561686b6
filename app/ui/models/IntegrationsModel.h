#pragma once

#include "app/assembly/Features.h"
#include "app/ui/models/IntegrationRow.h"
#include "app/ui/models/SwitchTrouble.h"
#include "foundation/TaskScope.h"

#include <QList>

#include <memory>
#include <vector>

namespace morvex {

/// The switches of the tool families, in their groups.
class IntegrationsModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(QList<QObject*> personalData READ personalData CONSTANT)
    Q_PROPERTY(QList<QObject*> macTools READ macTools CONSTANT)
    Q_PROPERTY(QList<QObject*> customApps READ customApps CONSTANT)
    Q_PROPERTY(bool detecting READ detecting NOTIFY detectingChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    /// `scope` runs the tasks that a switch starts.
    IntegrationsModel(Companion& companion, Features& features, TaskScope& scope);

    [[nodiscard]] const QList<QObject*>& personalData() const { return personalData_; }

    [[nodiscard]] const QList<QObject*>& macTools() const { return macTools_; }

    [[nodiscard]] const QList<QObject*>& customApps() const { return customApps_; }

    /// Why the last family could not be switched on, or that the settings are not saved.
    [[nodiscard]] QString trouble() const { return trouble_.text(); }

    /// Reads every row again.
    void refreshRows();

    /// Whether a search for programs and services is running.
    [[nodiscard]] bool detecting() const;
    /// Searches for programs and services again, unless a search is running.
    Q_INVOKABLE void detectAgain();

  Q_SIGNALS:
    void detectingChanged();
    void troubleChanged();

  private:
    void addPersonalData();
    void addOrganizer();
    void addWebSearch();
    void addMail();
    void addMacTools();
    void addCustomApps();
    [[nodiscard]] Sentence customAppsDetail() const;
    void addAgent(Integration integration, Sentence name, QProperty<AgentStatus>& status);
    IntegrationRow& add(QList<QObject*>& group, IntegrationRow::Description description);

    Companion& companion_;
    Features& features_;
    TaskScope& scope_;
    SwitchTrouble trouble_;
    std::vector<std::unique_ptr<IntegrationRow>> rows_;
    QList<QObject*> personalData_;
    QList<QObject*> macTools_;
    QList<QObject*> customApps_;
};

} // namespace morvex
