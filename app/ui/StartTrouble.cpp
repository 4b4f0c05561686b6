#include "app/ui/StartTrouble.h"

#include <QMessageBox>

namespace morvex {

void showStartTrouble(const std::string& words) {
    QMessageBox box;
    box.setIcon(QMessageBox::Critical);
    box.setWindowTitle(QStringLiteral("Morvex"));
    box.setText(QString::fromStdString(words));
    // The words may quote a path, which nobody meant as a document.
    box.setTextFormat(Qt::PlainText);
    box.addButton(QStringLiteral("Zavřít"), QMessageBox::RejectRole);
    box.exec();
}

} // namespace morvex
