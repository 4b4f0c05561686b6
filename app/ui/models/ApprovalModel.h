#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/ui/models/ViewModel.h"

namespace morvex {

/// The action that waits for a decision.
class ApprovalModel final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(bool waiting READ waiting NOTIFY changed)
    Q_PROPERTY(QString requestId READ requestId NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)

  public:
    explicit ApprovalModel(Schvalovani& schvalovani);

    [[nodiscard]] bool waiting() const;
    [[nodiscard]] QString requestId() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString detail() const;

    /// "Potvrdit" and "Zamítnout" under the request with this id. Nothing when another one is open meanwhile.
    Q_INVOKABLE void approve(const QString& id);
    Q_INVOKABLE void refuse(const QString& id);

  private:
    void decide(const QString& id, bool approved);

    Schvalovani& schvalovani_;
};

} // namespace morvex
