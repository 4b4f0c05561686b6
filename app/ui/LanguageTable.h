#pragma once

#include <QTranslator>

namespace morvex {

/// The words of the window in one language, and those of the toolkit's own dialogs and menus where its tables
/// are installed. Installed in the application, it answers for every context, since the Czech sentence alone
/// is the key. Main thread.
class LanguageTable final : public QTranslator {
    Q_OBJECT

  public:
    /// Czech.
    LanguageTable();

    /// Takes the table of this language ("cs", "en", …). Without one, as for Czech, every sentence stands for
    /// itself. True when it is another language than before.
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
