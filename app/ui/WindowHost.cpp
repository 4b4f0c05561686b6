#include "app/ui/WindowHost.h"

#include "app/ui/DescriptionNews.h"
#include "app/ui/GlyphProvider.h"
#include "app/ui/PressGuard.h"
#include "shared/base/Require.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QScreen>
#include <QStyleHints>

#include <algorithm>

/// Generated for the QML module. Without this reference the linker would drop the registration of a static
/// library.
void qml_register_types_Morvex();

namespace morvex {

namespace {

constexpr int gap = 8;
/// Longest time from the loss of focus, which closes the window, to the report of the same press to the item.
constexpr std::chrono::milliseconds onePress{300};

/// A place next to the tray item at which the whole window fits on its screen.
QPoint placeBeside(const QRect& trayItem, QSize size, const QRect& screen) {
    auto x = trayItem.center().x() - size.width() / 2;
    auto y = trayItem.center().y() < screen.center().y() ? trayItem.bottom() + gap
                                                         : trayItem.top() - gap - size.height();
    return {std::clamp(x, screen.left() + gap,
                       std::max(screen.left() + gap, screen.right() - gap - size.width())),
            std::clamp(y, screen.top() + gap,
                       std::max(screen.top() + gap, screen.bottom() - gap - size.height()))};
}

} // namespace

WindowHost::~WindowHost() {
    for (auto* window : {main_.data(), menu_.data()}) {
        if (!window) continue;
        // A window that is being destroyed reports that it was hidden when it is no window any more.
        window->disconnect(this);
        delete window;
    }
}

void WindowHost::showMainWindow(Focus focus) {
    // The window was closed, but is not deleted yet.
    if (main_ && !main_->isVisible()) delete main_;
    if (!main_) main_ = load(QStringLiteral("MainWindow"));
    // Qt's platform plugins read this property when a window is shown.
    main_->setProperty("_q_showWithoutActivating", focus == Focus::leave);
    if (main_->visibility() == QWindow::Minimized) {
        if (focus == Focus::leave) makeUnknown(*main_);
        main_->showNormal();
    } else {
        main_->show();
    }
    main_->raise();
    if (focus == Focus::take) main_->requestActivate();
}

void WindowHost::makeUnknown(QQuickWindow& window) {
    hiding_ = true;
    window.destroy();
    hiding_ = false;
}

void WindowHost::toggleMenu(const QRect& trayItem) {
    const auto now = clock_.sinceBoot();
    const std::chrono::milliseconds doubleClick{QGuiApplication::styleHints()->mouseDoubleClickInterval()};
    if (itemPressed_ && now - *itemPressed_ < doubleClick) return;
    itemPressed_ = now;
    if (menu_) {
        menu_->close();
        return;
    }
    if (menuClosed_ && now - *menuClosed_ < onePress) return;
    menu_ = load(QStringLiteral("MenuBarWindow"));
    // Some trays do not tell where their items are.
    QRect place = trayItem.isValid() ? trayItem : QRect(QCursor::pos(), QSize(1, 1));
    auto* screen = QGuiApplication::screenAt(place.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    menu_->setScreen(screen);
    menu_->setPosition(placeBeside(place, menu_->size(), screen->availableGeometry()));
    menu_->show();
    menu_->requestActivate();
}

void WindowHost::retranslate() {
    if (engine_) engine_->retranslate();
}

QQuickWindow* WindowHost::load(const QString& component) {
    if (!engine_) {
        [[maybe_unused]] volatile auto linked = &qml_register_types_Morvex;
        engine_ = std::make_unique<QQmlEngine>();
        engine_->addImportPath(QStringLiteral("qrc:/qml"));
        engine_->addImageProvider(QStringLiteral("glyph"), new GlyphProvider);
    }
    QQmlComponent source(engine_.get(), QUrl(QStringLiteral("qrc:/qml/Morvex/%1.qml").arg(component)));
    require(source.isReady(), source.errorString().toUtf8().constData());
    auto* window = qobject_cast<QQuickWindow*>(
        source.createWithInitialProperties({{QStringLiteral("companion"), QVariant::fromValue(&model_)}}));
    require(window != nullptr, "a window is no window");
    new DescriptionNews(*window);
    new PressGuard(*window, clock_);
    connect(window, &QWindow::visibleChanged, this, [this, window](bool visible) {
        if (visible || hiding_) return;
        if (window == menu_) menuClosed_ = clock_.sinceBoot();
        window->deleteLater();
        QMetaObject::invokeMethod(this, &WindowHost::letGo, Qt::QueuedConnection);
    });
    return window;
}

void WindowHost::letGo() {
    if (main_ || menu_ || !engine_) return;
    engine_.reset();
    freed_();
}

} // namespace morvex
