#pragma once

#include "app/ui/models/RecordTitle.h"
#include "app/ui/models/RowList.h"
#include "platform/ports/Clipboard.h"
#include "shared/base/Sentence.h"

#include <QVariantMap>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// Read-only texts that came from the phone: the cards of notes and of summaries.
class RecordsModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// Each row is a `RecordTitle`.
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    struct Record {
        std::string title;
        std::string body;
        QString date;        ///< of the last change, formatted for display
        QString origin = {}; ///< what it was made from, for display; empty if unknown
    };

    /// The source of the records; everything it refers to outlives this object.
    struct Source {
        std::function<std::vector<RecordTitle>()> titles;
        std::function<std::optional<Record>(const Uuid& id)> find;
        std::function<std::optional<Sentence>()> problem;
    };

    RecordsModel(Source source, Clipboard& clipboard);

    RowList* rows() { return &rows_; }

    [[nodiscard]] QString trouble() const;

    /// One whole record as a map: `id`, `title`, `body`, `date`, `origin`. Has no `id` if there is no such
    /// record.
    [[nodiscard]] Q_INVOKABLE QVariantMap find(const QString& id) const;
    Q_INVOKABLE void copy(const QString& text);

  Q_SIGNALS:
    void troubleChanged();

  private:
    [[nodiscard]] QVariantList readRows() const;

    Source source_;
    Clipboard& clipboard_;
    RowList rows_;
};

} // namespace morvex
