#include "app/ui/TolvyCompanionApp.h"

#include "app/companion/CompanionState.h"

#include <QApplication>
#include <QColor>
#include <QIcon>
#include <QPalette>

#include <chrono>
#include <utility>

namespace morvex {

namespace {

/// If there is no tray, a user who starts the program waits this long for the window.
constexpr std::chrono::seconds trayPatience{5};

/// Loading the keys takes less, unless a keyring asks the user.
constexpr std::chrono::milliseconds keysPatience{500};

constexpr QColor darkGround{0x24, 0x28, 0x2f};
constexpr QColor lightGround{0xef, 0xf0, 0xf2};

} // namespace

TolvyCompanionApp::TolvyCompanionApp(Companion& companion, Features& features, const Services& services)
    : state_(companion.stav()),
      hlas_(features.voice.controller()),
      clock_(services.clock),
      scope_(services.scope),
      colors_(services.colors),
      tray_(services.tray),
      model_(companion, features,
             {services.clock, services.scope, services.clipboard, services.appVersion,
              [this] { openMainWindow(); }, services.quit}),
      windows_(model_, services.clock, services.releaseMemory),
      item_(*model_.link(), tray_, [this](const QRect& place) { toggleMenu(place); }),
      notice_(*model_.approval(), services.notifications, [this] { openMainWindow(); }) {
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationDisplayName(QStringLiteral("Morvex"));
    QApplication::setDesktopFileName(QStringLiteral("morvex"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/pictures/morvex.svg")));
    followColors();
    colorsChanged_ = colors_.onChange([this] { followColors(); });
    followLanguage();
    QCoreApplication::installTranslator(&language_);
    QObject::connect(model_.voice(), &VoiceModel::changed, &windows_, [this] { followLanguage(); });
    QObject::connect(model_.approval(), &ApprovalModel::changed, &windows_, [this] { showApproval(); });
    QObject::connect(model_.folders(), &FoldersModel::asking, &windows_, [this] {
        if (!model_.folders()->askedPath().isEmpty()) openMainWindow();
    });
}

TolvyCompanionApp::~TolvyCompanionApp() {
    QCoreApplication::removeTranslator(&language_);
}

void TolvyCompanionApp::start() {
    item_.show();
    if (!state_.areKeysLoading()) return openAtStart();
    isStarting_ = true;
    keysNotifier_ = state_.keys.addNotifier([this] {
        if (!state_.areKeysLoading() && std::exchange(isStarting_, false)) openAtStart();
    });
    scope_.spawn(openMainWindowWhileKeysAreAwaited());
}

Task<void> TolvyCompanionApp::openMainWindowWhileKeysAreAwaited() {
    if (co_await sleepFor(clock_, keysPatience, scope_.token()) && isStarting_) openMainWindow();
}

void TolvyCompanionApp::openAtStart() {
    if (!model_.pairing()->hasPhone())
        openMainWindow();
    else if (!tray_.isThere())
        scope_.spawn(openMainWindowWithoutATray());
}

Task<void> TolvyCompanionApp::openMainWindowWithoutATray() {
    if (co_await sleepFor(clock_, trayPatience, scope_.token()) && !tray_.isThere()) openMainWindow();
}

void TolvyCompanionApp::openMainWindow() {
    windows_.showMainWindow(WindowHost::Focus::take);
}

void TolvyCompanionApp::followLanguage() {
    if (!language_.take(QString::fromStdString(hlas_.textLanguage()))) return;
    windows_.retranslate();
    model_.refresh();
}

void TolvyCompanionApp::followColors() {
    using enum ColorScheme::Preference;
    // Qt's own dialogs follow the palette too. The empty palette is the desktop's.
    switch (colors_.preference()) {
    case dark:
        return QApplication::setPalette(QPalette(darkGround));
    case light:
        return QApplication::setPalette(QPalette(lightGround));
    case none:
        return QApplication::setPalette(QPalette());
    }
}

void TolvyCompanionApp::showApproval() {
    if (model_.approval()->waiting()) windows_.showMainWindow(WindowHost::Focus::leave);
}

} // namespace morvex
