#include "tests/e2e/TrayHost.h"

#include <string_view>

namespace morvex {

namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* item = "org.kde.StatusNotifierItem";
constexpr const char* properties = "org.freedesktop.DBus.Properties";

constexpr const char* description =
    "<node><interface name='org.kde.StatusNotifierWatcher'>"
    "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>"
    "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>"
    "</interface></node>";

} // namespace

TrayHost::TrayHost(const std::string& bus)
    : service_(bus, watcher, [this](GDBusMessage* call) { return answer(call); }) {}

GDBusMessage* TrayHost::answer(GDBusMessage* call) {
    const std::string_view method = g_dbus_message_get_member(call);
    auto* reply = g_dbus_message_new_method_reply(call);
    if (method == "Introspect") g_dbus_message_set_body(reply, g_variant_new("(s)", description));
    if (method == "Get") g_dbus_message_set_body(reply, g_variant_new("(v)", g_variant_new_boolean(TRUE)));
    if (method == "RegisterStatusNotifierItem") {
        std::lock_guard lock(mutex_);
        items_.emplace_back(g_dbus_message_get_sender(call));
    }
    return reply;
}

std::size_t TrayHost::items() {
    std::lock_guard lock(mutex_);
    return items_.size();
}

std::string TrayHost::picture() {
    auto pixels = property("IconPixmap");
    const GLibHandle<char, g_free> text(g_variant_print(pixels.get(), FALSE));
    return text.get();
}

std::string TrayHost::toolTip() {
    auto tip = property("ToolTip");
    const Value title(g_variant_get_child_value(tip.get(), 2));
    return g_variant_get_string(title.get(), nullptr);
}

void TrayHost::press() {
    call(item, "Activate", g_variant_new("(ii)", 0, 0));
}

void TrayHost::askForMenu() {
    call(item, "ContextMenu", g_variant_new("(ii)", 0, 0));
}

TrayHost::Value TrayHost::call(const char* interface, const char* method, GVariant* arguments) {
    constexpr int patience = 30'000; // milliseconds
    std::string name;
    {
        std::lock_guard lock(mutex_);
        name = items_.at(0);
    }
    Value reply(g_dbus_connection_call_sync(service_.connection(), name.c_str(), "/StatusNotifierItem",
                                            interface, method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
                                            patience, nullptr, nullptr));
    require(reply != nullptr, "the tray item does not answer");
    return reply;
}

TrayHost::Value TrayHost::property(const char* name) {
    auto reply = call(properties, "Get", g_variant_new("(ss)", item, name));
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    return Value(value);
}

} // namespace morvex
