#pragma once

#include "app/agents/AgentsFeature.h"
#include "app/ui/models/RowList.h"

namespace morvex {

/// The tasks of the coding agents: card "Poslední úkoly" and the running one in the tray window.
class AgentTasksModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// Each row is a map: `id`, `title`, `state`, `detail`, `running`, `failed`, `continuation`.
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)
    /// Name of the agent that is working now; empty if none is.
    Q_PROPERTY(QString runningTool READ runningTool NOTIFY runningToolChanged)
    Q_PROPERTY(QString runningId READ runningId NOTIFY runningIdChanged)

  public:
    explicit AgentTasksModel(AgentsFeature& agents);

    RowList* rows() { return &rows_; }

    [[nodiscard]] QString trouble() const;
    [[nodiscard]] QString runningTool() const;
    [[nodiscard]] QString runningId() const;

    /// "Pokračovat v …": opens the task's session in its agent's application.
    Q_INVOKABLE void resume(const QString& id);
    Q_INVOKABLE void stop(const QString& id);
    /// "Vymazat historii"
    Q_INVOKABLE void clear();

  Q_SIGNALS:
    void troubleChanged();
    void runningToolChanged();
    void runningIdChanged();

  private:
    [[nodiscard]] QVariantList readRows() const;
    [[nodiscard]] const UkolAgenta* find(const QString& id) const;

    AgentsFeature& agents_;
    HistorieAgentu& historie_;
    RowList rows_;
};

} // namespace morvex
