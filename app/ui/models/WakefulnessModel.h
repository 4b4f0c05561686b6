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
    Q_PROPERTY(bool startsAtLogin READ startsAtLogin WRITE setStartsAtLogin NOTIFY startsAtLoginChanged)
    Q_PROPERTY(bool staysAwake READ staysAwake WRITE setStaysAwake NOTIFY staysAwakeChanged)
    Q_PROPERTY(QString state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString loginTrouble READ loginTrouble NOTIFY loginTroubleChanged)
    Q_PROPERTY(QString wakeTrouble READ wakeTrouble NOTIFY wakeTroubleChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    WakefulnessModel(Bdelost& bdelost, CompanionState& state);

    [[nodiscard]] bool startsAtLogin() const;
    void setStartsAtLogin(bool starts);
    [[nodiscard]] bool staysAwake() const;
    void setStaysAwake(bool stays);
    [[nodiscard]] QString state() const;
    [[nodiscard]] QString loginTrouble() const;
    [[nodiscard]] QString wakeTrouble() const;
    /// Why the settings could not be read or saved.
    [[nodiscard]] QString trouble() const;

  Q_SIGNALS:
    void startsAtLoginChanged();
    void staysAwakeChanged();
    void stateChanged();
    void loginTroubleChanged();
    void wakeTroubleChanged();
    void troubleChanged();

  private:
    Bdelost& bdelost_;
    CompanionState& state_;
};

} // namespace morvex
