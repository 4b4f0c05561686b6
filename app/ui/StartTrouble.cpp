#include "app/ui/StartTrouble.h"

#include <QMessageBox>

namespace morvex {

void showStartTrouble(const std::string& words) {
    QMessageBox box;
    box.setIcon(QMessageBox::Critical);
    box.setWindowTitle(QStringLiteral("Morvex"));
    box.setText(QString::fromStdString(words));
    // The text may contain a path, which must not be interpreted as markup.
    box.setTextFormat(Qt::PlainText);
    box.addButton(QStringLiteral("Zavřít"), QMessageBox::RejectRole);
    box.exec();
}

} // namespace morvex
