#pragma once

#include "app/companion/CompanionState.h"
#include "app/mail/bridge/MacMailAccounts.h"
#include "app/ui/models/RowList.h"
#include "app/ui/models/SwitchTrouble.h"
#include "foundation/TaskScope.h"

#include <QVariantList>

#include <string>

namespace morvex {

/// The accounts of Apple Mail: which of them Morvex may use, and which one sends.
class AppleMailModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// Each row is a map: `id` (its name), `allowed`.
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    /// What can be chosen to send by default, each a map: `name`, `account` (empty for none).
    Q_PROPERTY(QVariantList senders READ senders NOTIFY sendersChanged)
    Q_PROPERTY(int senderIndex READ senderIndex NOTIFY senderIndexChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    AppleMailModel(MacMailAccounts& accounts, CompanionState& state, TaskScope& scope);

    RowList* rows() { return &rows_; }

    [[nodiscard]] QVariantList senders() const;
    [[nodiscard]] int senderIndex() const;

    /// Why the accounts are not known.
    [[nodiscard]] QString problem() const;

    /// Why the last account could not be allowed, or that the settings are not saved.
    [[nodiscard]] QString trouble() const { return trouble_.text(); }

    /// Allowing takes effect, and shows, once it is saved.
    Q_INVOKABLE void setAllowed(const QString& account, bool allowed);
    /// An empty name: none.
    Q_INVOKABLE void setSender(const QString& account);

  Q_SIGNALS:
    void sendersChanged();
    void senderIndexChanged();
    void problemChanged();
    void troubleChanged();

  private:
    [[nodiscard]] QVariantList readRows() const;
    Task<void> turn(std::string account, bool allowed);

    MacMailAccounts& accounts_;
    TaskScope& scope_;
    SwitchTrouble trouble_;
    RowList rows_;
};

} // namespace morvex
