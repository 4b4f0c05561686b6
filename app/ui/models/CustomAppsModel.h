#pragma once

#include "app/companion/CompanionState.h"
#include "app/customapps/MacCustomAppsService.h"
#include "app/ui/models/RowList.h"
#include "app/ui/models/SwitchTrouble.h"
#include "foundation/TaskScope.h"
#include "shared/base/Sentence.h"

#include <QVariantList>

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// The custom apps and their editor.
class CustomAppsModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// Each row is a map: `id`, `name`, `endpoint`, `enabled`, `fromPhone`, `outcome` (what came of asking
    /// it, may be empty), `failure` (the same where it failed), `news` (a count), `holdsChanges`.
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(bool saving READ saving NOTIFY savingChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    CustomAppsModel(MacCustomAppsService& service, CompanionState& state, TaskScope& scope);

    RowList* rows() { return &rows_; }

    [[nodiscard]] bool saving() const { return saving_; }

    /// Why the last save failed.
    [[nodiscard]] QString error() const;

    /// Why the last app could not be switched on, that the settings are not saved, or that what was seen of
    /// the tools is not.
    [[nodiscard]] QString trouble() const;

    /// Switching on takes effect, and shows, once it is saved.
    Q_INVOKABLE void setEnabled(const QString& id, bool enabled);
    Q_INVOKABLE void remove(const QString& id);
    /// Adds an app if the id is empty, otherwise changes that app. An empty token keeps the present one. Only
    /// the editor that asked hears of the end, by `saved` or by `error`.
    Q_INVOKABLE void save(const QString& id, const QString& name, const QString& endpoint,
                          const QString& token);
    /// Asks all apps for their tools.
    Q_INVOKABLE void askAgain();
    /// The tools of the app that have changed or are new. Each is a map: `name`, `isNew`, `isPast` (what is
    /// `after` holds no more), `before` and `after` (what differs of description and schema).
    Q_INVOKABLE QVariantList newsOf(const QString& id);
    /// A person has looked at what the last `newsOf` told.
    Q_INVOKABLE void looked(const QString& id);
    Q_INVOKABLE void setHoldsChanges(const QString& id, bool holds);
    /// Called when the editor opens.
    Q_INVOKABLE void startEditing();

  Q_SIGNALS:
    void savingChanged();
    void errorChanged();
    void troubleChanged();
    void saved();

  private:
    [[nodiscard]] QVariantList readRows() const;
    Task<void> keep(int asker, std::optional<std::string> id, std::string name, std::string endpoint,
                    std::string token);

    Task<void> turn(std::string id, bool enabled);

    MacCustomAppsService& service_;
    TaskScope& scope_;
    SwitchTrouble trouble_;
    bool saving_ = false;
    int editor_ = 0; ///< counts the openings of the editor
    Sentence error_;
    std::vector<SeenTool> shown_; ///< the news that were told last
    RowList rows_;
};

} // namespace morvex
