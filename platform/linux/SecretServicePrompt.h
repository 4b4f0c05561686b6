#pragma once

#include "platform/linux/CallDeadline.h"

#include <optional>
#include <string>

namespace morvex {

/// A prompt of the Secret Service to the user, usually for a password. The service shows it; this class waits
/// for its end, since the library's own wait never ends if the service ends first. Needs a main context owned
/// by this thread.
class SecretServicePrompt {
  public:
    enum class End {
        agreed,
        dismissed, ///< closed by the user, or it could not be shown
        vanished,  ///< the service ended
        unanswered ///< the time is over; unlocking later still helps the next call
    };

    SecretServicePrompt(GDBusConnection* bus, std::string path) : bus_(bus), path_(std::move(path)) {}

    SecretServicePrompt(const SecretServicePrompt&) = delete;
    SecretServicePrompt& operator=(const SecretServicePrompt&) = delete;

    /// Call once. Returns `unanswered` at once when `stop` is requested. An unanswered prompt is not
    /// dismissed, since a common keyring crashes on that; it closes the prompt anyway when the connection
    /// ends.
    End run(const CallDeadline& deadline, const std::stop_token& stop = {});

  private:
    void askForAnswer(const CallDeadline& deadline, const std::stop_token& stop);
    void end(End end);

    static void onCompleted(GDBusConnection*, const char*, const char*, const char*, const char*,
                            GVariant* parameters, gpointer self);
    static void onOwnerChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                               GVariant*, gpointer self);

    GDBusConnection* bus_;
    std::string path_;
    std::optional<End> end_;
};

} // namespace morvex
