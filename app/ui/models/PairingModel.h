#pragma once

#include "app/companion/Companion.h"
#include "app/ui/models/ViewModel.h"
#include "foundation/Clock.h"
#include "foundation/TaskScope.h"
#include "platform/ports/Clipboard.h"
#include "shared/base/Sentence.h"

namespace morvex {

/// What the pairing view draws and does.
class PairingModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(Situation situation READ situation NOTIFY situationChanged)
    Q_PROPERTY(QString keys READ keys NOTIFY keysChanged)
    Q_PROPERTY(bool hasPhone READ hasPhone NOTIFY hasPhoneChanged)
    Q_PROPERTY(QString phone READ phone NOTIFY phoneChanged)
    Q_PROPERTY(QString confirmedOn READ confirmedOn NOTIFY confirmedOnChanged)
    Q_PROPERTY(QString code READ code NOTIFY codeChanged)
    Q_PROPERTY(QString validUntil READ validUntil NOTIFY validUntilChanged)
    Q_PROPERTY(bool expired READ expired NOTIFY expiredChanged)
    Q_PROPERTY(QString number READ number NOTIFY numberChanged)
    Q_PROPERTY(QString phoneLeft READ phoneLeft NOTIFY phoneLeftChanged)
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged)
    Q_PROPERTY(QString relayAddress READ relayAddress WRITE setRelayAddress NOTIFY relayAddressChanged)
    Q_PROPERTY(QString relayProblem READ relayProblem NOTIFY relayProblemChanged)
    Q_PROPERTY(bool relayIsLocal READ relayIsLocal NOTIFY relayIsLocalChanged)

  public:
    enum class Situation { LoadingKeys, NoKeys, NoPhone, Paired, Creating, ShowingCode, Comparing, Failed };
    Q_ENUM(Situation)

    struct Services {
        Clock& clock;
        TaskScope& scope;
        Clipboard& clipboard;
    };

    PairingModel(Companion& companion, Services services);

    [[nodiscard]] Situation situation() const;
    /// What the program waits for while the keys of this computer are not loaded, or why loading failed.
    [[nodiscard]] QString keys() const;
    [[nodiscard]] bool hasPhone() const;
    [[nodiscard]] QString phone() const;
    [[nodiscard]] QString confirmedOn() const;
    [[nodiscard]] QString code() const;
    [[nodiscard]] QString validUntil() const;
    /// Whether the code on screen has expired.
    [[nodiscard]] bool expired() const;
    [[nodiscard]] QString number() const;
    /// A note that the phone has left meanwhile; empty otherwise.
    [[nodiscard]] QString phoneLeft() const;
    [[nodiscard]] QString failure() const;
    [[nodiscard]] QString relayAddress() const;
    void setRelayAddress(const QString& address);
    /// Why the last entered address was not taken over; empty if it was.
    [[nodiscard]] QString relayProblem() const;
    /// Whether no other device can reach the relay under this address.
    [[nodiscard]] bool relayIsLocal() const;

    /// "Zkusit znovu" next to keys that could not be loaded.
    Q_INVOKABLE void loadKeys();
    Q_INVOKABLE void start();
    Q_INVOKABLE void cancel();
    /// "Souhlasí" under this number.
    Q_INVOKABLE void confirm(const QString& number);
    Q_INVOKABLE void refuse();
    Q_INVOKABLE void unpair();
    /// For a phone program that runs in a terminal.
    Q_INVOKABLE void copyCode();

  Q_SIGNALS:
    void situationChanged();
    void keysChanged();
    void hasPhoneChanged();
    void phoneChanged();
    void confirmedOnChanged();
    void codeChanged();
    void validUntilChanged();
    void expiredChanged();
    void numberChanged();
    void phoneLeftChanged();
    void failureChanged();
    void relayAddressChanged();
    void relayProblemChanged();
    void relayIsLocalChanged();

  private:
    void watchExpiry();
    Task<void> refreshAt(Date expiry);

    Companion& companion_;
    Services services_;
    Sentence relayProblem_;
    QPropertyNotifier codeNotifier_;
};

} // namespace morvex
