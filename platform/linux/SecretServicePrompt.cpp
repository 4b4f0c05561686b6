#include "platform/linux/SecretServicePrompt.h"

namespace morvex {

namespace {

constexpr const char* service = "org.freedesktop.secrets";
constexpr const char* interface = "org.freedesktop.Secret.Prompt";

gboolean wakeUp(gpointer) {
    return G_SOURCE_REMOVE;
}

/// Ends a blocking turn of the thread's main context once the time is over.
class TimeoutSource {
  public:
    explicit TimeoutSource(std::chrono::milliseconds time)
        : source_(g_timeout_source_new(static_cast<guint>(time.count()))) {
        g_source_set_callback(source_.get(), wakeUp, nullptr, nullptr);
        g_source_attach(source_.get(), g_main_context_get_thread_default());
    }

    ~TimeoutSource() { g_source_destroy(source_.get()); }

    TimeoutSource(const TimeoutSource&) = delete;
    TimeoutSource& operator=(const TimeoutSource&) = delete;

  private:
    GLibHandle<GSource, g_source_unref> source_;
};

} // namespace

SecretServicePrompt::End SecretServicePrompt::run(const CallDeadline& deadline, const std::stop_token& stop) {
    guint completed =
        g_dbus_connection_signal_subscribe(bus_, service, interface, "Completed", path_.c_str(), nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, &onCompleted, this, nullptr);
    guint owner = g_dbus_connection_signal_subscribe(
        bus_, "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", "/org/freedesktop/DBus",
        service, G_DBUS_SIGNAL_FLAGS_NONE, &onOwnerChanged, this, nullptr);
    askForAnswer(deadline, stop);
    g_dbus_connection_signal_unsubscribe(bus_, completed);
    g_dbus_connection_signal_unsubscribe(bus_, owner);
    return end_.value_or(End::unanswered);
}

void SecretServicePrompt::askForAnswer(const CallDeadline& deadline, const std::stop_token& stop) {
    constexpr const char* noWindow = "";
    GLibHandle<GVariant, g_variant_unref> shown(g_dbus_connection_call_sync(
        bus_, service, path_.c_str(), interface, "Prompt", g_variant_new("(s)", noWindow), nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, deadline.cancellable(), nullptr));
    if (!shown && !deadline.passed()) end(End::vanished);
    TimeoutSource wake(deadline.remaining());
    auto* context = g_main_context_get_thread_default();
    const std::stop_callback stopped(stop, [context] { g_main_context_wakeup(context); });
    while (!end_ && !stop.stop_requested() && deadline.remaining().count() > 0)
        g_main_context_iteration(context, TRUE);
}

void SecretServicePrompt::end(End end) {
    if (!end_) end_ = end;
}

void SecretServicePrompt::onCompleted(GDBusConnection*, const char*, const char*, const char*, const char*,
                                      GVariant* parameters, gpointer self) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(bv)"))) return;
    gboolean dismissed = TRUE;
    g_variant_get(parameters, "(bv)", &dismissed, nullptr);
    static_cast<SecretServicePrompt*>(self)->end(dismissed ? End::dismissed : End::agreed);
}

void SecretServicePrompt::onOwnerChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                                         GVariant*, gpointer self) {
    static_cast<SecretServicePrompt*>(self)->end(End::vanished);
}

} // namespace morvex
