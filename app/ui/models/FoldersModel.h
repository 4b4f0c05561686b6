#pragma once

#include "app/companion/CompanionState.h"
#include "app/execution/Slozky.h"
#include "app/ui/models/RowList.h"
#include "foundation/TaskScope.h"

namespace morvex {

/// The folders that the phone may reach.
class FoldersModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// Each row is a map: `id`, `path`, `name`, `needsRenewal`.
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(bool anyNeedsRenewal READ anyNeedsRenewal NOTIFY anyNeedsRenewalChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)
    Q_PROPERTY(QString askedPath READ askedPath NOTIFY asking)
    Q_PROPERTY(QString warning READ warning NOTIFY asking)

  public:
    FoldersModel(Slozky& slozky, CompanionState& state, TaskScope& scope);

    RowList* rows() { return &rows_; }

    [[nodiscard]] bool anyNeedsRenewal() const;
    /// Why the last permission could not be saved, or that the settings are not saved.
    [[nodiscard]] QString trouble() const;

    /// The folder about which the user is asked, and what allowing it would mean; empty if nothing is asked.
    [[nodiscard]] QString askedPath() const;
    [[nodiscard]] QString warning() const;

    /// Lets the user choose folders in a dialog.
    Q_INVOKABLE void add();
    /// The answers to the open question.
    Q_INVOKABLE void allowAsked();
    Q_INVOKABLE void refuseAsked();
    Q_INVOKABLE void remove(const QString& path);

  Q_SIGNALS:
    void anyNeedsRenewalChanged();
    void troubleChanged();
    /// Another question is open, or none any more.
    void asking();

  private:
    [[nodiscard]] QVariantList readRows() const;

    Slozky& slozky_;
    CompanionState& state_;
    TaskScope& scope_;
    RowList rows_;
};

} // namespace morvex
