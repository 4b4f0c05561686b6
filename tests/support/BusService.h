#pragma once

#include "platform/linux/GLibHandle.h"
#include "shared/base/Require.h"

#include <atomic>
#include <functional>
#include <string>
#include <utility>

namespace morvex {

/// A service on a bus, played by the test: it owns a name and passes every call to a function. The function
/// returns the answer, or null to leave the call unanswered. It runs on a GLib thread.
class BusService {
  public:
    using Answer = std::function<GDBusMessage*(GDBusMessage* call)>;

    BusService(const std::string& bus, const char* name, Answer answer) : answer_(std::move(answer)) {
        auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                       G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        connection_.reset(
            g_dbus_connection_new_for_address_sync(bus.c_str(), flags, nullptr, nullptr, nullptr));
        require(connection_ != nullptr, "a test cannot reach its bus");
        filter_ = g_dbus_connection_add_filter(connection_.get(), &BusService::pass, this, nullptr);
        GLibHandle<GVariant, g_variant_unref> owned(g_dbus_connection_call_sync(
            connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "RequestName", g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
            nullptr));
        require(owned != nullptr, "a test cannot own a name on its bus");
    }

    ~BusService() {
        g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
        g_dbus_connection_remove_filter(connection_.get(), filter_);
    }

    BusService(const BusService&) = delete;
    BusService& operator=(const BusService&) = delete;

    [[nodiscard]] GDBusConnection* connection() const { return connection_.get(); }

    /// Waits until the first call has been answered.
    void waitForCall() { called_.wait(false); }

    static GDBusMessage* silence(GDBusMessage*) { return nullptr; }

  private:
    static GDBusMessage* pass(GDBusConnection* connection, GDBusMessage* message, gboolean incoming,
                              gpointer self) {
        if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
            return message;
        GLibHandle<GDBusMessage> call(message);
        auto& service = *static_cast<BusService*>(self);
        GLibHandle<GDBusMessage> answer(service.answer_(message));
        if (answer)
            g_dbus_connection_send_message(connection, answer.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                           nullptr);
        service.called_ = true;
        service.called_.notify_all();
        return nullptr;
    }

    Answer answer_;
    GLibHandle<GDBusConnection> connection_;
    guint filter_ = 0;
    std::atomic_bool called_ = false;
};

} // namespace morvex
