#pragma once

#include "app/ui/models/ViewModel.h"

#include <QAbstractListModel>
#include <QVariantList>

#include <functional>

namespace morvex {

/// The rows of a view model as QML repeats them, each a map with an `id` of its own. What changes in one row
/// leaves the others standing, and the keyboard where it is. Part of its view model; main thread.
class RowList final : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

  public:
    /// Reads now and after each change of the view model, which has everything that `read` needs by now.
    RowList(const ViewModel& owner, std::function<QVariantList()> read);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    void readAnew();
    void dropMissing(const QVariantList& now);
    void place(const QVariant& row, qsizetype position);

    std::function<QVariantList()> read_;
    QVariantList rows_;
};

} // namespace morvex
