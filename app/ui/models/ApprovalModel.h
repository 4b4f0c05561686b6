#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/ui/models/ViewModel.h"

namespace morvex {

/// The action that waits for a decision.
class ApprovalModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(bool waiting READ waiting NOTIFY waitingChanged)
    Q_PROPERTY(QString requestId READ requestId NOTIFY requestIdChanged)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(QString detail READ detail NOTIFY detailChanged)

  public:
    explicit ApprovalModel(Schvalovani& schvalovani);

    [[nodiscard]] bool waiting() const;
    [[nodiscard]] QString requestId() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString detail() const;

    /// "Potvrdit" and "Zamítnout" for the request with this id. Does nothing if another request is open by
    /// now.
    Q_INVOKABLE void approve(const QString& id);
    Q_INVOKABLE void refuse(const QString& id);

  Q_SIGNALS:
    void waitingChanged();
    void requestIdChanged();
    void titleChanged();
    void detailChanged();

  private:
    void decide(const QString& id, bool approved);

    Schvalovani& schvalovani_;
};

} // namespace morvex
