#pragma once

#include "app/execution/Slozky.h"
#include "app/ui/models/ViewModel.h"
#include "foundation/TaskScope.h"

#include <QVariantList>

namespace morvex {

/// The folders that the phone may reach. The companion calls this object back, so it lives as long as the
/// companion works.
class FoldersModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// A map each: `path`, `name`, `needsRenewal`.
    Q_PROPERTY(QVariantList rows READ rows NOTIFY changed)
    Q_PROPERTY(bool anyNeedsRenewal READ anyNeedsRenewal NOTIFY changed)
    Q_PROPERTY(QString trouble READ trouble NOTIFY changed)

  public:
    FoldersModel(Slozky& slozky, TaskScope& scope);

    [[nodiscard]] QVariantList rows() const;
    [[nodiscard]] bool anyNeedsRenewal() const;
    [[nodiscard]] QString trouble() const;

    /// Asks for folders in a dialog.
    Q_INVOKABLE void add();
    Q_INVOKABLE void remove(const QString& path);

  private:
    Slozky& slozky_;
    TaskScope& scope_;
};

} // namespace morvex
