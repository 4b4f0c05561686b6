#pragma once

#include "app/ui/models/ViewModel.h"
#include "app/voice/MacVoiceController.h"

#include <QVariantList>

namespace morvex {

/// The preferences of the voice assistant: its key and the language of the program.
class VoiceModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(bool hasKey READ hasKey NOTIFY hasKeyChanged)
    /// Each entry is a map: `mode`, `name`.
    Q_PROPERTY(QVariantList languages READ languages NOTIFY languagesChanged)
    Q_PROPERTY(int languageIndex READ languageIndex NOTIFY languageIndexChanged)

  public:
    explicit VoiceModel(MacVoiceController& hlas);

    [[nodiscard]] bool hasKey() const;
    [[nodiscard]] QVariantList languages() const;
    /// Index of the current language mode in `languages`.
    [[nodiscard]] int languageIndex() const;

    Q_INVOKABLE void setLanguageMode(const QString& mode);

  Q_SIGNALS:
    void hasKeyChanged();
    void languagesChanged();
    void languageIndexChanged();

  private:
    MacVoiceController& hlas_;
};

} // namespace morvex
