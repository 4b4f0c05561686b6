#pragma once

#include "app/companion/CompanionState.h"
#include "app/ui/models/ViewModel.h"
#include "platform/ports/Clipboard.h"

namespace morvex {

/// Facts about this program and this device: card "O aplikaci".
class AboutModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(QString identifier READ identifier NOTIFY identifierChanged)
    Q_PROPERTY(QString protocolVersion READ protocolVersion CONSTANT)
    Q_PROPERTY(QString appVersion READ appVersion CONSTANT)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    AboutModel(CompanionState& state, QString appVersion, Clipboard& clipboard);

    /// Identifier of this device; empty until its identity has been loaded.
    [[nodiscard]] QString identifier() const;
    [[nodiscard]] QString protocolVersion() const;

    [[nodiscard]] const QString& appVersion() const { return appVersion_; }

    /// Why the settings could not be read or saved.
    [[nodiscard]] QString trouble() const;

    Q_INVOKABLE void copyIdentifier();

  Q_SIGNALS:
    void identifierChanged();
    void troubleChanged();

  private:
    CompanionState& state_;
    QString appVersion_;
    Clipboard& clipboard_;
};

} // namespace morvex
