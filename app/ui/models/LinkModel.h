#pragma once

#include "app/companion/Companion.h"
#include "app/ui/AvailabilitySymbol.h"
#include "app/ui/models/ViewModel.h"
#include "foundation/Clock.h"
#include "foundation/TaskScope.h"

namespace morvex {

/// The link to the phone: header of the tray window and card "Spojení".
class LinkModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(QString availability READ availability NOTIFY availabilityChanged)
    Q_PROPERTY(QString symbol READ symbol NOTIFY symbolChanged)
    Q_PROPERTY(bool usable READ usable NOTIFY usableChanged)
    Q_PROPERTY(bool needsAttention READ needsAttention NOTIFY needsAttentionChanged)
    Q_PROPERTY(QString relay READ relay NOTIFY relayChanged)
    Q_PROPERTY(QString nextAttempt READ nextAttempt NOTIFY nextAttemptChanged)
    Q_PROPERTY(QString placeOfKeys READ placeOfKeys NOTIFY placeOfKeysChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    LinkModel(Companion& companion, Clock& clock, TaskScope& scope);

    [[nodiscard]] QString availability() const;
    /// Name of the picture for the availability.
    [[nodiscard]] QString symbol() const;
    [[nodiscard]] bool usable() const;
    [[nodiscard]] bool needsAttention() const;
    [[nodiscard]] QString relay() const;
    /// When the link tries again; empty unless it waits.
    [[nodiscard]] QString nextAttempt() const;
    /// A note that the keys are stored in files; empty if there is a keyring.
    [[nodiscard]] QString placeOfKeys() const;
    [[nodiscard]] QString trouble() const;

    /// "Zkusit hned"
    Q_INVOKABLE void tryNow();

  Q_SIGNALS:
    void availabilityChanged();
    void symbolChanged();
    void usableChanged();
    void needsAttentionChanged();
    void relayChanged();
    void nextAttemptChanged();
    void placeOfKeysChanged();
    void troubleChanged();

  private:
    void countMinutes();
    Task<void> refreshEachMinute();
    void countSeconds();
    Task<void> refreshEachSecond();
    [[nodiscard]] Clock::Duration untilNextAttempt() const;

    Companion& companion_;
    CompanionState& state_;
    Clock& clock_;
    TaskScope& scope_;
    bool counting_ = false;
    bool countingSeconds_ = false;
    QPropertyNotifier sleepNotifier_;
    QPropertyNotifier attemptNotifier_;
};

} // namespace morvex
