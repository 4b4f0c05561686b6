#include <QAccessible>
#include <QApplication>
#include <QFont>
#include <QMessageLogContext>
#include <QQuickWindow>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

namespace {

/// What the toolkit says of a layout or a binding that goes round in circles fails the test in which it
/// happens.
void hear(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.contains(QStringLiteral("loop"))) ADD_FAILURE() << message.toStdString();
    std::cerr << qFormatLogMessage(type, context, message).toStdString() << '\n';
}

} // namespace

/// The tests of the window draw without a display, with one font, in one time zone.
int main(int argc, char** argv) {
    for (const auto& [name, value] :
         {std::pair{"QT_QPA_PLATFORM", "offscreen"}, {"LC_ALL", "cs_CZ.UTF-8"}, {"TZ", "UTC"}})
        ::setenv(name, value, 1);
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(hear);
    QApplication application(argc, argv);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(14);
    QApplication::setFont(font);
    QAccessible::setActive(true);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return RUN_ALL_TESTS();
}
