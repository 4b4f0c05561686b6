#pragma once

#include "shared/base/Date.h"
#include "shared/base/Uuid.h"

#include <QObject>
#include <QString>

#include <string>

namespace morvex {

/// What a row of the window shows of a note or a summary. There may be very many rows, so this is small
/// however long the record is.
struct RecordTitle {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString date READ date)

  public:
    /// In bytes; a row has room for less.
    static constexpr std::size_t longestTitle = 1000;

    /// `changed` is the date of the last change.
    static RecordTitle of(const Uuid& id, const std::string& title, Date changed);

    /// The date of the last change, formatted for display.
    [[nodiscard]] QString date() const;

    bool operator==(const RecordTitle&) const = default;

    QString id;
    QString title;
    Date changed;
};

} // namespace morvex
