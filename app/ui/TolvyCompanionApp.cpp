#include "app/ui/TolvyCompanionApp.h"

#include <QApplication>
#include <QIcon>

namespace morvex {

TolvyCompanionApp::TolvyCompanionApp(Companion& companion, const Surroundings& surroundings)
    : language_(surroundings.defaults),
      model_(companion, {surroundings.clock, surroundings.scope, surroundings.clipboard,
                         surroundings.appVersion, [this] { openMainWindow(); }, surroundings.quit}),
      tray_(*model_.link(), [this](const QRect& place) { windows_.toggleMenu(place); }),
      notice_(*model_.approval(), surroundings.notifications) {
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationDisplayName(QStringLiteral("Morvex"));
    QApplication::setDesktopFileName(QStringLiteral("morvex"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/pictures/morvex.svg")));
    QCoreApplication::installTranslator(&language_);
    QObject::connect(model_.approval(), &ApprovalModel::changed, &windows_, [this] { showApproval(); });
}

TolvyCompanionApp::~TolvyCompanionApp() {
    QCoreApplication::removeTranslator(&language_);
}

void TolvyCompanionApp::start() {
    tray_.show();
    if (!TrayItem::isThereATray() || !model_.pairing()->hasPhone()) openMainWindow();
}

void TolvyCompanionApp::openMainWindow() {
    windows_.showMainWindow(WindowHost::Focus::take);
}

void TolvyCompanionApp::showApproval() {
    if (model_.approval()->waiting()) windows_.showMainWindow(WindowHost::Focus::leave);
}

} // namespace morvex
