#pragma once

#include "app/companion/CompanionState.h"
#include "app/execution/Slozky.h"
#include "app/ui/models/RowList.h"
#include "foundation/TaskScope.h"

namespace morvex {

/// The folders that the phone may reach. The companion calls this object back, so it lives as long as the
/// companion works.
class FoldersModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// A map each: `id`, `path`, `name`, `needsRenewal`.
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(bool anyNeedsRenewal READ anyNeedsRenewal NOTIFY changed)
    Q_PROPERTY(QString trouble READ trouble NOTIFY changed)

  public:
    FoldersModel(Slozky& slozky, CompanionState& state, TaskScope& scope);

    RowList* rows() { return &rows_; }

    [[nodiscard]] bool anyNeedsRenewal() const;
    /// Why the last permission could not be kept, or the settings are not saved.
    [[nodiscard]] QString trouble() const;

    /// Asks for folders in a dialog.
    Q_INVOKABLE void add();
    Q_INVOKABLE void remove(const QString& path);

  private:
    [[nodiscard]] QVariantList readRows() const;

    Slozky& slozky_;
    CompanionState& state_;
    TaskScope& scope_;
    RowList rows_;
};

} // namespace morvex
