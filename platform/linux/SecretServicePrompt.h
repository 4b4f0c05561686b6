#pragma once

#include "platform/linux/CallDeadline.h"

#include <optional>
#include <string>

namespace morvex {

/// A question of the Secret Service to the user, for a password as a rule. The service shows it; this waits.
/// The library's own wait never ends when the service ends first. Needs a main context that is this thread's
/// own.
class SecretServicePrompt {
  public:
    enum class End {
        agreed,
        dismissed, ///< closed by the user, or nothing could show it
        vanished,  ///< the service ended
        unanswered ///< the time is over; who unlocks later still helps the next call
    };

    SecretServicePrompt(GDBusConnection* bus, std::string path) : bus_(bus), path_(std::move(path)) {}

    SecretServicePrompt(const SecretServicePrompt&) = delete;
    SecretServicePrompt& operator=(const SecretServicePrompt&) = delete;

    /// Once. A question without an answer is not taken back: a common keyring crashes on that, and closes it
    /// anyway when the connection ends.
    /// It is `unanswered` at once when `stop` is requested.
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
