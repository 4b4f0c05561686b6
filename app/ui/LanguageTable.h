#pragma once

#include "platform/ports/UserDefaults.h"

#include <QTranslator>

namespace morvex {

/// The language of the window: Czech until the phone has sent one, whatever the system's is. Installed in the
/// application, it answers for every context, since the Czech sentence alone is the key. Main thread.
class LanguageTable final : public QTranslator {
    Q_OBJECT

  public:
    explicit LanguageTable(const UserDefaults& defaults);

    /// Takes the table of the language in force. True when it is another one than before.
    bool update();

    /// "cs", "en", …
    [[nodiscard]] const QString& code() const { return code_; }

    QString translate(const char* context, const char* source, const char* disambiguation,
                      int count) const override;

    [[nodiscard]] bool isEmpty() const override { return table_.isEmpty(); }

  private:
    const UserDefaults& defaults_;
    QString code_;
    QTranslator table_;
};

} // namespace morvex
