#pragma once

#include "app/companion/Companion.h"
#include "app/ui/AvailabilitySymbol.h"
#include "app/ui/models/ViewModel.h"
#include "foundation/Clock.h"

namespace morvex {

/// The link to the phone: header of the tray window and card "Spojení".
class LinkModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(QString availability READ availability NOTIFY changed)
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    Q_PROPERTY(bool usable READ usable NOTIFY changed)
    Q_PROPERTY(bool needsAttention READ needsAttention NOTIFY changed)
    Q_PROPERTY(QString relay READ relay NOTIFY changed)
    Q_PROPERTY(QString trouble READ trouble NOTIFY changed)

  public:
    LinkModel(Companion& companion, Clock& clock, TaskScope& scope);

    [[nodiscard]] QString availability() const;
    /// Name of the picture that stands for the availability.
    [[nodiscard]] QString symbol() const;
    [[nodiscard]] bool usable() const;
    [[nodiscard]] bool needsAttention() const;
    [[nodiscard]] QString relay() const;
    [[nodiscard]] QString trouble() const;

  private:
    void countMinutes();
    Task<void> refreshEachMinute();

    CompanionState& state_;
    Clock& clock_;
    TaskScope& scope_;
    bool counting_ = false;
    QPropertyNotifier sleepNotifier_;
};

} // namespace morvex
