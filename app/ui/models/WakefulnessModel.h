#pragma once

#include "app/companion/Bdelost.h"
#include "app/companion/CompanionState.h"
#include "app/ui/models/ViewModel.h"

namespace morvex {

/// Whether this computer can be reached: card "Dostupnost".
class WakefulnessModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(bool startsAtLogin READ startsAtLogin WRITE setStartsAtLogin NOTIFY changed)
    Q_PROPERTY(bool staysAwake READ staysAwake WRITE setStaysAwake NOTIFY changed)
    Q_PROPERTY(QString state READ state NOTIFY changed)
    Q_PROPERTY(QString loginTrouble READ loginTrouble NOTIFY changed)
    Q_PROPERTY(QString wakeTrouble READ wakeTrouble NOTIFY changed)
    Q_PROPERTY(QString trouble READ trouble NOTIFY changed)

  public:
    WakefulnessModel(Bdelost& bdelost, CompanionState& state);

    [[nodiscard]] bool startsAtLogin() const;
    void setStartsAtLogin(bool starts);
    [[nodiscard]] bool staysAwake() const;
    void setStaysAwake(bool stays);
    [[nodiscard]] QString state() const;
    [[nodiscard]] QString loginTrouble() const;
    [[nodiscard]] QString wakeTrouble() const;
    /// The settings are not saved.
    [[nodiscard]] QString trouble() const;

  private:
    Bdelost& bdelost_;
    CompanionState& state_;
};

} // namespace morvex
