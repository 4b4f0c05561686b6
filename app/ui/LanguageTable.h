#pragma once

#include <QTranslator>

namespace morvex {

/// The texts of the window in one language, and those of Qt's own dialogs and menus if Qt's tables are
/// installed. It answers for every translation context, because the Czech sentence alone is the key. Main
/// thread.
class LanguageTable final : public QTranslator {
    Q_OBJECT

  public:
    /// Starts with Czech.
    LanguageTable();

    /// Loads the table of this language ("cs", "en", …). Without a table every sentence stays Czech. Returns
    /// whether the language has changed.
    bool take(const QString& code);

    QString translate(const char* context, const char* source, const char* disambiguation,
                      int count) const override;

    [[nodiscard]] bool isEmpty() const override { return table_.isEmpty() && toolkit_.isEmpty(); }

  private:
    void load(const QString& code);

    QString code_ = QStringLiteral("cs");
    QTranslator table_;
    QTranslator toolkit_;
};

} // namespace morvex
