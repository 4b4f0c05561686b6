#include "platform/qt/XembedTray.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <xcb/xcb.h>

namespace morvex {

namespace {

/// Null where Qt does not draw on an X display.
xcb_connection_t* display() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

template <class Reply> auto held(Reply* reply) {
    return std::unique_ptr<Reply, decltype([](Reply* gone) { std::free(gone); })>(reply);
}

xcb_atom_t atom(std::string_view name) {
    auto asked = xcb_intern_atom(display(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    auto reply = held(xcb_intern_atom_reply(display(), asked, nullptr));
    return reply ? reply->atom : XCB_ATOM_NONE;
}

} // namespace

XembedTray::XembedTray() {
    if (!display()) return;
    manager_ = atom("MANAGER");
    tray_ = atom("_NET_SYSTEM_TRAY_S0");
    qGuiApp->installNativeEventFilter(this);
}

XembedTray::~XembedTray() {
    qGuiApp->removeNativeEventFilter(this);
}

bool XembedTray::isThere() const {
    if (tray_ == XCB_ATOM_NONE) return false;
    auto asked = xcb_get_selection_owner(display(), tray_);
    auto reply = held(xcb_get_selection_owner_reply(display(), asked, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

Connection XembedTray::onArrival(std::function<void()> slot) {
    return arrival_.connect(std::move(slot));
}

bool XembedTray::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) return false;
    const auto* told = static_cast<const xcb_client_message_event_t*>(message);
    if (told->type == manager_ && told->data.data32[1] == tray_) arrival_.tell();
    return false;
}

} // namespace morvex
