#pragma once

#include "app/companion/CompanionState.h"
#include "app/mail/MacSMTPService.h"
#include "app/ui/models/RowList.h"
#include "app/ui/models/SwitchTrouble.h"
#include "foundation/TaskScope.h"
#include "shared/base/Sentence.h"

#include <QVariantList>
#include <QVariantMap>

#include <string>

namespace morvex {

/// The direct mail accounts and their editor.
class DirectMailModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    /// Each row is a map: `id`, `label`, `address`, `senderName`, `imapHost`, `smtpHost`, `name` (the label
    /// or the address), `isDefault`, `isTesting`, `status` (how the last test went, may be empty) and
    /// `failure` (why it failed, or what is missing).
    Q_PROPERTY(morvex::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(bool saving READ saving NOTIFY savingChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(QString trouble READ trouble NOTIFY troubleChanged)

  public:
    DirectMailModel(MacSMTPService& service, CompanionState& state, TaskScope& scope);

    RowList* rows() { return &rows_; }

    [[nodiscard]] bool saving() const { return saving_; }

    /// Why the last save failed.
    [[nodiscard]] QString error() const;

    /// That the settings are not saved.
    [[nodiscard]] QString trouble() const { return trouble_.text(); }

    /// Adds an account if `id` in the fields (those of a row) is empty, otherwise changes that account. An
    /// empty password keeps the present one. With `test` the login is checked afterwards. Only the editor
    /// that asked hears of the end, by `saved` or by `error`.
    Q_INVOKABLE void save(const QVariantMap& fields, const QString& password, bool test);
    Q_INVOKABLE void remove(const QString& id);
    Q_INVOKABLE void setDefault(const QString& id);
    /// Checks the login.
    Q_INVOKABLE void test(const QString& id);
    /// Called when the editor opens.
    Q_INVOKABLE void startEditing();

  Q_SIGNALS:
    void savingChanged();
    void errorChanged();
    void troubleChanged();
    void saved();

  private:
    [[nodiscard]] QVariantList readRows() const;
    [[nodiscard]] QVariantMap rowOf(const MacSMTPAccount& account) const;
    Task<void> keep(int asker, MacSMTPAccount account, std::string password, bool test);

    MacSMTPService& service_;
    TaskScope& scope_;
    SwitchTrouble trouble_;
    bool saving_ = false;
    int editor_ = 0; ///< counts the openings of the editor
    Sentence error_;
    RowList rows_;
};

} // namespace morvex
