#pragma once

#include "app/ui/models/ViewModel.h"

#include <QAbstractListModel>
#include <QSet>
#include <QVariantList>

#include <functional>

namespace morvex {

/// The rows of a view model, as QML repeats them, each with its own id. A change of one row keeps the other
/// rows and the keyboard focus. If a change would take too many steps, all rows are reported as new. Part of
/// its view model; main thread.
class RowList final : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

  public:
    using Id = QString (*)(const QVariant& row);

    /// Most steps before all rows are reported as new. A step inserts or removes a run of rows or moves one
    /// row, and takes one pass over the rows.
    static constexpr int mostSteps = 100;

    /// Reads the rows now and after each change of the view model; everything that `read` uses must exist
    /// already. The rows are maps with an `id`, unless `idOf` says otherwise.
    RowList(const ViewModel& owner, std::function<QVariantList()> read, Id idOf = idOfMap);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    using Ids = QSet<QString>;

    static QString idOfMap(const QVariant& row);
    [[nodiscard]] Ids idsOf(const QVariantList& rows) const;

    void readAnew();
    /// The next two return false if there were too many steps.
    bool dropMissing(const QVariantList& now, int& steps);
    bool placeAll(const QVariantList& now, int& steps);
    void drop(qsizetype first, qsizetype end);
    void insert(const QVariantList& now, qsizetype first, qsizetype end);
    bool bring(const QVariantList& now, qsizetype position, const Ids& stored);
    void move(qsizetype from, qsizetype to);
    void update(const QVariant& row, qsizetype position);
    [[nodiscard]] qsizetype find(const QString& id, qsizetype from) const;

    std::function<QVariantList()> read_;
    Id idOf_;
    QVariantList rows_;
};

} // namespace morvex
