#include "platform/qt/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace morvex {

void QtClipboard::setText(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

} // namespace morvex
