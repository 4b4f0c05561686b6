#pragma once

#include <functional>
#include <string>
#include <vector>

namespace morvex {

/// One message of the desktop, shown over whatever the user is doing. Best effort: a desktop may show
/// nothing, or no buttons. Main thread only.
///
///     show -> (onAction)? -> withdraw, or the next show, which replaces the message
class Notifications {
  public:
    struct Action {
        std::string key; ///< passed to `onAction`
        std::string label;
    };

    struct Notice {
        std::string title;
        std::string body;
        std::vector<Action> actions;
        std::function<void(const std::string& key)> onAction; ///< the user pressed it; at most once
    };

    /// Key of the action for a press on the message itself; its label may never be shown.
    static constexpr const char* pressedItself = "default";

    virtual ~Notifications() = default;

    virtual void show(Notice notice) = 0;

    /// After this call `onAction` is not called any more.
    virtual void withdraw() = 0;
};

} // namespace morvex
