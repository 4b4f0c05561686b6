#include "app/ui/models/ApprovalModel.h"

#include "app/ui/Localized.h"

namespace morvex {

ApprovalModel::ApprovalModel(Schvalovani& schvalovani) : schvalovani_(schvalovani) {
    watch(schvalovani_.zadost());
}

bool ApprovalModel::waiting() const {
    return schvalovani_.zadost().value().has_value();
}

QString ApprovalModel::requestId() const {
    const auto& request = schvalovani_.zadost().value();
    return request ? QString::fromStdString(request->id) : QString();
}

QString ApprovalModel::title() const {
    const auto& request = schvalovani_.zadost().value();
    return request ? localized(Sentence(request->title)) : QString();
}

QString ApprovalModel::detail() const {
    const auto& request = schvalovani_.zadost().value();
    return request ? QString::fromStdString(request->detail) : QString();
}

void ApprovalModel::approve(const QString& id) {
    decide(id, true);
}

void ApprovalModel::refuse(const QString& id) {
    decide(id, false);
}

void ApprovalModel::decide(const QString& shownId, bool approved) {
    if (waiting() && requestId() == shownId) schvalovani_.rozhodnout(approved);
}

} // namespace morvex
